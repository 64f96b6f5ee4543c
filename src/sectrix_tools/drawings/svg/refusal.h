#pragma once

#include "sectrix_tools/drawings/drawing.h"

#include <algorithm>
#include <cmath>
#include <string>

/// \file
/// What a drawing says where there is nothing to draw, or more than it shows.

namespace qel::SectrixTools::Pictures {

/// True for the extent of what has a place in a picture: finite, not negative, and not nothing. Neither its scale
/// nor any product of it with a page then overflows.
inline bool IsDrawable(double width, double height) {
    return width >= 0 && height >= 0 && std::max(width, height) < 1e300 && std::max(width, height) > 1e-290;
}

/// A finding on a picture that shows less than it was given.
inline Finding LeftOut(std::string const& code, std::string const& message) {
    Finding finding;
    finding.m_severity = Severity::Warning;
    finding.m_code = code;
    finding.m_message = message;
    return finding;
}

/// No picture, and why.
inline Drawing NothingToDraw(std::string const& reason) {
    Finding finding;
    finding.m_code = "nothing-to-draw";
    finding.m_message = "nothing can be drawn: " + reason;
    return {{}, {finding}};
}

} // namespace qel::SectrixTools::Pictures
