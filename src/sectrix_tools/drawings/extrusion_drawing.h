#pragma once

#include "sectrix/extrusion/extrusion.h"
#include "sectrix/foundation/export.h"
#include "sectrix_tools/drawings/drawing.h"

#include <string>
#include <vector>

/// \file
/// The drawing of a part that is made of polylines.

namespace qel::SectrixTools {

/// Draws the profiles of an extrusion, exterior ones in another colour than interior ones, with lines between the
/// profiles of a section where these have equally many positions; and end planes with their normals. Seen from
/// (1, 1, 1) with z upward.
///
/// \param extrusion  its positions that are not finite are passed over. A finding "nothing-to-draw" and no picture where
///                   none is left.
/// \param planes     those without a finite origin and normal are left out, and a finding "plane-left-out" says so.
/// \param title      stands above, in UTF-8.
/// \param unit       the unit along the axes, written behind the length of the scale bar.
SECTRIX_TOOLS_EXPORT Drawing DrawExtrusion(Sectrix::Extrusion const& extrusion,
                                           std::vector<Sectrix::EndPlane> const& planes, std::string const& title,
                                           std::string const& unit);

} // namespace qel::SectrixTools
