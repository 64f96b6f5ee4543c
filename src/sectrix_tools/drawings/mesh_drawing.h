#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"
#include "sectrix/mesh/mesh.h"
#include "sectrix_tools/drawings/drawing.h"

#include <cstdint>
#include <string>
#include <vector>

/// \file
/// Drawings of triangles in space.

namespace qel::SectrixTools {

/// Triangles by the points at their corners, counter-clockwise as seen from outside.
struct DrawnTriangles {
    /// What stands above them, in UTF-8.
    std::string m_caption;
    /// The points.
    std::vector<Vec<3, double>> m_points;
    /// Three places in the list of points a triangle. A triangle with a corner that is not there, or without a
    /// place in a picture, is left out.
    std::vector<std::int64_t> m_corners;
    /// Faces that are no triangles, drawn in broken lines.
    std::vector<std::vector<Vec<3, double>>> m_otherFaces;
};

/// The points and corners of a mesh under a caption.
SECTRIX_TOOLS_EXPORT DrawnTriangles TrianglesOf(Sectrix::Mesh const& mesh, std::string const& caption);

/// Draws triangles in panels side by side, in one scale, seen from (1, 1, 1) with z upward.
///
/// Each triangle is shaded by its direction, one seen from behind in another colour. Lines are the edges that do
/// not have exactly two triangles, or at which the surface bends. Nearer triangles cover those behind them, also
/// where they reach through each other.
///
/// Costs at worst the square of the number of triangles.
///
/// \param panels  a finding "nothing-to-draw" and no picture where no point has a place in a picture. A panel with more
///                than 5,000 triangles shows none of them, and a finding "too-many-triangles" says so.
/// \param title   stands above, in UTF-8.
/// \param unit    the unit along the axes, written behind the length of the scale bar.
SECTRIX_TOOLS_EXPORT Drawing DrawTriangles(std::vector<DrawnTriangles> const& panels, std::string const& title,
                                           std::string const& unit);

} // namespace qel::SectrixTools
