#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/loop.h"

#include <vector>

/// \file
/// Points, area and convexity of a loop.

namespace qel::SectrixTools {

/// In radians: a corner that turns by no more than this counts as straight. Rounding turns a corner in the middle
/// of an edge by less, drawing never.
inline constexpr double kStraightAngle = 1e-9;

/// The points of the vertices in their order. Vertices whose index is not in the pool are left out.
SECTRIX_TOOLS_EXPORT std::vector<Vec<2, double>> Points(Sectrix::Loop const& loop);

/// The area within a loop, negative when it runs clockwise; 0 for fewer than three points. Where the loop crosses
/// itself every part counts as often as the loop runs around it, with its sign.
///
/// Summed about the first point, so that coordinates far from the origin cost no digits.
SECTRIX_TOOLS_EXPORT double SignedArea(Sectrix::Loop const& loop);

/// True for a loop that runs counter-clockwise once around its area and at no corner turns to the right. Points
/// that repeat the one before them do not matter. A loop without area, or with a coordinate that is not finite, is
/// not convex.
///
/// \param straight  in radians, from 0 to below a quarter of a turn: the angle up to which a turn to the right counts
///                  as none.
SECTRIX_TOOLS_EXPORT bool IsConvex(Sectrix::Loop const& loop, double straight = kStraightAngle);

} // namespace qel::SectrixTools
