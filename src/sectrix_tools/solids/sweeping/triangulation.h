#pragma once

#include "sectrix/foundation/value_types.h"

#include <array>
#include <cstddef>
#include <vector>

/// \file
/// The cutting of a convex polygon into triangles.

namespace qel::SectrixTools::Solids {

using Point2 = Vec<2, double>;

/// Twice the area of a triangle, positive when it runs counter-clockwise.
double TwiceArea(Point2 const& a, Point2 const& b, Point2 const& c);

/// Triangles by the places of their corners.
using Triangles = std::vector<std::array<std::size_t, 3>>;

/// Cuts a polygon that runs counter-clockwise and is convex, with straight corners or without, into triangles, none
/// of them flat. The smallest ear goes first: it takes the corners beside straight ones before those across, so
/// what is left never lies on one line.
///
/// Returns none where that fails, as for a polygon without area; where it does not, all triangles run
/// counter-clockwise, whatever the polygon was. Costs n log n.
///
/// \param straight  the height over its neighbours up to which a corner counts as straight.
Triangles Triangulate(std::vector<Point2> const& polygon, double straight);

} // namespace qel::SectrixTools::Solids
