#pragma once

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix/foundation/value_types.h"

/// \file
/// The turn at a corner, and what it is compared with.

namespace qel::Sectrix {

/// On a turn value. A corner is strictly convex when its value is at most the negative of this.
inline constexpr double kTurnTolerance = 1e-6;

/// The turn at the corner `q` on the way from `p` to `r`: twice the area of the triangle, negative for a turn to
/// the left. This is the negative of what computational geometry calls orient2d(p, q, r), rounded as written here.
inline double Turn(Vec<2, double> const& p, Vec<2, double> const& q, Vec<2, double> const& r) {
    return (p[0] - q[0]) * (r[1] - q[1]) - (p[1] - q[1]) * (r[0] - q[0]);
}

/// True for a reflex vertex, one that turns to the right, and for a straight one, which is cut at like any other.
inline bool IsReflex(Vec<2, double> const& p, Vec<2, double> const& q, Vec<2, double> const& r) {
    return Turn(p, q, r) > -kTurnTolerance;
}

} // namespace qel::Sectrix
