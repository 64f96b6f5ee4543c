#pragma once

#include <string>
#include <string_view>
#include <vector>

/// \file
/// The line of a text that a finding speaks of, with a caret below its place.

namespace qel::SectrixCommand {

/// A text by its lines. It refers to the text, which must outlive it.
class TextLines {
public:
    /// Costs nothing until the first line is asked for; then one walk through the text.
    explicit TextLines(std::string_view text) : m_text(text) {}

    /// A line, counted from 1, without its line break; empty for one that is not there.
    std::string_view At(int line);

private:
    std::string_view m_text;
    /// Where each line begins; empty until asked for.
    std::vector<std::size_t> m_starts;
};

/// Two lines: the line of the text behind its number, and a caret below the place. A line that is wide is cut on
/// both sides of the place, with three dots where something is left out.
///
/// \param line    counted from 1.
/// \param column  in bytes, counted from 1; behind the end of the line for what is missing there.
std::string Excerpt(std::string_view lineText, int line, int column);

} // namespace qel::SectrixCommand
