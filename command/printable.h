#pragma once

#include <cstddef>
#include <string>
#include <string_view>
#include <vector>

/// \file
/// Text of unknown origin in a form that a terminal shows and does not obey.

namespace qel::SectrixCommand {

/// One character of a text, as it is shown.
struct Glyph {
    /// The character itself in UTF-8; a space for a tab; an escape such as \u001b for a control character, which
    /// could move the cursor, and for one that turns the direction of writing round; U+FFFD for a byte that is no
    /// UTF-8.
    std::string m_shown;
    /// How many columns of a terminal it takes: 2 for a wide character, 0 for a combining one.
    int m_width = 1;
    /// The place of its first byte in the text.
    std::size_t m_at = 0;
};

/// The characters of a text in their order; each byte of it belongs to one of them.
std::vector<Glyph> Glyphs(std::string_view text);

/// What the characters of a text show, one after another: UTF-8, whatever the text is, and without a control
/// character.
std::string Printable(std::string_view text);

/// The text in UTF-8 as it is, with each byte that is no UTF-8 replaced by U+FFFD.
std::string ValidUtf8(std::string_view text);

} // namespace qel::SectrixCommand
