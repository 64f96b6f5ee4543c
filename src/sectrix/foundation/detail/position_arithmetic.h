#pragma once

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix/foundation/position.h"

/// \file
/// What `Position` computes, inline for the library's own loops over many positions. Not for hosts, whose compilers
/// may fuse a product with a sum and so round differently.

namespace qel::Sectrix {

/// Positions closer than this are near.
constexpr double kNearDistance = 0.0001;

inline double SquaredDistance(Position const& a, Position const& b) {
    double const dx = a.X() - b.X();
    double const dy = a.Y() - b.Y();
    double const dz = a.Z() - b.Z();
    return dx * dx + dy * dy + dz * dz;
}

/// True also where the distance is not a number. The product is exactly the double 1e-8, on which positions exactly
/// 0.0001 apart depend: they are not near.
inline bool AreNear(Position const& a, Position const& b) {
    return !(SquaredDistance(a, b) >= kNearDistance * kNearDistance);
}

/// \param m  the sixteen elements of a matrix.
inline Position Transformed(double x, double y, double z, double const* m) {
    auto const component = [=](int column) {
        return y * m[4 + column] + x * m[column] + z * m[8 + column] + m[12 + column];
    };
    double const q = 1.0 / component(3);
    Position position;
    position.SetX(component(0) * q);
    position.SetY(component(1) * q);
    position.SetZ(component(2) * q);
    return position;
}

} // namespace qel::Sectrix
