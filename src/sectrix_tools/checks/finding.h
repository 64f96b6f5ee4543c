#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"

#include <optional>
#include <string>
#include <vector>

/// \file
/// One thing that is wrong, or hardly meant, and where.

namespace qel::SectrixTools {

/// How bad a finding is.
enum class Severity {
    /// Reading drops or alters something, or the section cannot be what was meant.
    Error,
    /// Read as it stands, but hardly meant.
    Warning
};

/// "error" or "warning"; a constant text.
SECTRIX_TOOLS_EXPORT char const* SeverityName(Severity severity) noexcept;

/// One thing that is wrong in a document, in the geometry of a set, or between two sets.
///
/// A plain value. What does not apply stays at its default: a finding on geometry has no line where no text is at
/// hand, one on the text has no point.
struct Finding {
    /// How bad it is.
    Severity m_severity = Severity::Error;
    /// A stable, short name of the kind of fault, in lower case with hyphens, such as "index-out-of-range".
    std::string m_code;
    /// The fault in words for a person, in UTF-8: one line, no period at its end.
    std::string m_message;
    /// The element of the document as a JSON Pointer (RFC 6901); empty for the whole document, or without one.
    std::string m_pointer;
    /// The line of the text, counted from 1; 0 without a text.
    int m_line = 0;
    /// The column in bytes, counted from 1; 0 without a text.
    int m_column = 0;
    /// The place of the section in its set, counted from 0; -1 where no section is meant.
    int m_section = -1;
    /// 0 for the exterior loop, 1 onward for the interior loops in their order; -1 where no loop is meant.
    int m_loop = -1;
    /// The place of the vertex in its loop, counted from 0; -1 where no vertex is meant.
    int m_vertex = -1;
    /// Where in the plane, in the units of the set.
    std::optional<Vec<2, double>> m_point;
};

/// Findings in the order in which a reader meets them.
using Findings = std::vector<Finding>;

/// True when one of them is an error.
SECTRIX_TOOLS_EXPORT bool HasErrors(Findings const& findings) noexcept;

} // namespace qel::SectrixTools
