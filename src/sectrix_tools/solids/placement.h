#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"

#include <cstddef>
#include <vector>

/// \file
/// Where sections stand in space.

namespace qel::SectrixTools {

/// The placement of a section that stands across a direction: the point (x, y) of its plane comes to
/// `origin` + x * right + y * upright, as the row vector (x, y, 0, 1) times the matrix.
///
/// Someone who looks along the direction sees the section as it is drawn. Upright is `up`, made perpendicular to
/// the direction; right is perpendicular to both. The third row is against the direction, so the matrix turns and
/// moves and does not mirror.
///
/// \param direction  of any length.
///
/// \param up         of any length, not along the direction. Where no placement follows, because a vector is zero, not
///                   finite, or both lie on one line, the elements are not a number, which `Sweep` refuses.
///
/// \param twist      in radians: turns the section counter-clockwise in its plane, about its own origin, so that its
///                   right side rises. A superelevation that rises by 2.5 % to the right is atan(0.025).
SECTRIX_TOOLS_EXPORT Mat<4, double> Placement(Vec<3, double> const& origin, Vec<3, double> const& direction,
                                              Vec<3, double> const& up = {0, 0, 1}, double twist = 0.0);

/// Placements at equal distances along a straight line, both ends included, across the line.
///
/// \param count  below 2 gives none.
///
/// \param up     as for `Placement`.
SECTRIX_TOOLS_EXPORT std::vector<Mat<4, double>> PlacementsAlongLine(Vec<3, double> const& from,
                                                                     Vec<3, double> const& to, std::size_t count,
                                                                     Vec<3, double> const& up = {0, 0, 1});

/// Placements at the points of a curve, in their order. Each stands across the direction of the curve there: that
/// of the circle through the point and its two neighbours, at the ends through the two points nearest. On an arc of
/// a circle, at whatever distances, that is the tangent.
///
/// \param points  two or more, no two successive ones alike; fewer give none.
///
/// \param up      as for `Placement`.
///
/// \param twists  the twist at each point, as for `Placement`; those beyond its end are 0.
SECTRIX_TOOLS_EXPORT std::vector<Mat<4, double>> PlacementsAlongCurve(std::vector<Vec<3, double>> const& points,
                                                                      Vec<3, double> const& up = {0, 0, 1},
                                                                      std::vector<double> const& twists = {});

} // namespace qel::SectrixTools
