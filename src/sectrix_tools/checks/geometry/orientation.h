#pragma once

#include "sectrix_tools/checks/geometry/point.h"

/// \file
/// On which side of a line a point lies, without rounding.

namespace qel::SectrixTools::Geometry {

/// 1 when c lies to the left of the line from a to b, -1 to the right, 0 on it.
///
/// The sign is that of the exact determinant, whatever rounding does to its parts, for coordinates that are 0 or
/// between 1e-140 and 1e140 in size.
///
/// After J. R. Shewchuk, "Adaptive Precision Floating-Point Arithmetic and Fast Robust Geometric Predicates",
/// Discrete & Computational Geometry 18 (1997), 305-363.
int Orientation(Point const& a, Point const& b, Point const& c);

/// True when c, which must be on the line through a and b, lies on the same side of a as b does.
inline bool IsAhead(Point const& a, Point const& b, Point const& c) {
    return a < b ? a < c : c < a;
}

/// True when two rays from the same point have the same direction; neither end is that point.
inline bool AreSameRay(Point const& from, Point const& one, Point const& other) {
    return IsAhead(from, one, other) && Orientation(from, one, other) == 0;
}

} // namespace qel::SectrixTools::Geometry
