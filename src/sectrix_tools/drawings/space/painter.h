#pragma once

/// \file
/// Hidden surfaces: triangles in an order in which each covers what is behind it.

#include "sectrix_tools/drawings/space/isometry.h"
#include "sectrix_tools/drawings/svg/svg.h"

#include <string>
#include <vector>

namespace qel::SectrixTools::Pictures {

/// A flat convex piece of a surface.
struct Piece {
    /// At least three.
    std::vector<Vector> m_corners;
    /// For each corner, whether the side from it to the next is a line of the picture.
    std::vector<bool> m_lines;
    /// The class of its fill.
    std::string m_class;
};

/// Draws pieces as the viewer sees them, and their lines in the class "edge". Pieces that reach through the plane
/// of another are cut, up to 20,000 times; after that such a piece counts as being where most of it is.
///
/// Costs at worst the square of their number.
///
/// \param room  how far a corner may be off a plane and still counts as in it.
void Paint(Svg& svg, std::vector<Piece> pieces, View const& view, double room);

} // namespace qel::SectrixTools::Pictures
