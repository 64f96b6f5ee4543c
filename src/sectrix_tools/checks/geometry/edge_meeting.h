#pragma once

#include "sectrix_tools/checks/geometry/point.h"

/// \file
/// How two edges lie to each other.

namespace qel::SectrixTools::Geometry {

enum class Meeting {
    /// No point in common.
    None,
    /// One point in common, inside both.
    Cross,
    /// One point in common, an end of one inside the other.
    Touch,
    /// One point in common, an end of both.
    Corner,
    /// More than one point in common.
    Overlap
};

/// How the segment from a to b and that from c to d lie to each other, without rounding. Neither is a point.
Meeting Meet(Point const& a, Point const& b, Point const& c, Point const& d);

/// True when the point lies on the segment from a to b and is none of its ends.
bool IsInside(Point const& a, Point const& b, Point const& point);

/// Where two segments cross, rounded; within both boxes.
Point CrossingPoint(Point const& a, Point const& b, Point const& c, Point const& d);

} // namespace qel::SectrixTools::Geometry
