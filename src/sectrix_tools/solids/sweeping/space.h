#pragma once

#include "sectrix/foundation/value_types.h"

#include <cmath>

/// \file
/// Vectors in space.

namespace qel::SectrixTools::Solids {

using Point3 = Vec<3, double>;

inline Point3 Difference(Point3 const& to, Point3 const& from) {
    return {to[0] - from[0], to[1] - from[1], to[2] - from[2]};
}
inline Point3 Sum(Point3 const& a, Point3 const& b) {
    return {a[0] + b[0], a[1] + b[1], a[2] + b[2]};
}
inline Point3 Scaled(Point3 const& a, double factor) {
    return {a[0] * factor, a[1] * factor, a[2] * factor};
}
inline double Dot(Point3 const& a, Point3 const& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}
inline Point3 Cross(Point3 const& a, Point3 const& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}
inline double Length(Point3 const& a) {
    return std::sqrt(Dot(a, a));
}

} // namespace qel::SectrixTools::Solids
