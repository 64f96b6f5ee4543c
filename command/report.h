#pragma once

#include "sectrix/interfaces/dom.h"
#include "sectrix_tools/checks/finding.h"

#include <cstddef>
#include <string>
#include <string_view>

/// \file
/// Findings on standard output.

namespace qel::SectrixCommand {

/// FILE:LINE:COLUMN: SEVERITY: MESSAGE [CODE], without what the finding does not have, and without a line break.
std::string FindingLine(std::string const& file, SectrixTools::Finding const& finding);

/// The findings of one file after another, as lines for people and editors or as one JSON array for programs.
class Report {
public:
    /// How findings are shown.
    struct Style {
        /// One JSON array instead of lines.
        bool m_isJson = false;
        /// The line of the document below each finding; not in JSON.
        bool m_hasContext = false;
        /// At most so many of a file are shown, and then how many more there are; 0 shows all.
        std::size_t m_limit = 0;
    };

    /// Shows nothing yet.
    explicit Report(Style style) : m_style(style) { m_array.toArray(); }

    /// Prints the findings of a file as lines, or keeps them for `End`.
    ///
    /// \param text  the content of the file that the findings speak of.
    /// \throws what `Print` throws.
    void Add(std::string const& file, std::string_view text, SectrixTools::Findings const& findings);
    /// Prints the array of JSON.
    ///
    /// \throws what `Print` throws.
    void End() const;

private:
    Style m_style;
    Dom m_array;
};

} // namespace qel::SectrixCommand
