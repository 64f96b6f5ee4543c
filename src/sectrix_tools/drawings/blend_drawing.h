#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/drawings/drawing.h"

#include <string>
#include <vector>

/// \file
/// Drawings of sections on the way from one to another.

namespace qel::SectrixTools {

/// A section at one place on the way, for a drawing.
struct DrawnStation {
    /// Not null; must outlive the call.
    Sectrix::CrossSection const* m_section;
    /// What stands below it, in UTF-8.
    std::string m_caption;
};

/// The sections side by side in one scale and at one height, each with its convex loops, which are built where they
/// are not.
///
/// \param stations  in the order of the rows. A finding "nothing-to-draw" and no picture where there is none, or where
///                  their common box has no finite extent. Of more than a thousand only the first thousand are
///                  drawn, and a finding "stations-left-out" says so.
/// \param title     stands above, in UTF-8.
/// \param unit      the unit of the coordinates, written behind lengths.
SECTRIX_TOOLS_EXPORT Drawing DrawSideBySide(std::vector<DrawnStation> const& stations, std::string const& title,
                                            std::string const& unit);

/// The outlines one behind the other, the first in front, with lines along the span through their corners. The
/// distances between them are not to scale.
///
/// \param stations  of one structure: lines join the corners at the same place of the same loop. Otherwise as above.
/// \param title     stands above, in UTF-8.
/// \param unit      the unit of the coordinates, written behind lengths.
SECTRIX_TOOLS_EXPORT Drawing DrawAlongSpan(std::vector<DrawnStation> const& stations, std::string const& title,
                                           std::string const& unit);

} // namespace qel::SectrixTools
