#pragma once

#include "sectrix_tools/checks/geometry/boundary.h"

#include <cstddef>
#include <tuple>

/// \file
/// A stretch of boundary that passes through a point.

namespace qel::SectrixTools::Geometry {

/// A loop where it passes through a point: at a corner, or inside an edge.
struct Strand {
    /// The number of the corner or of the edge.
    std::size_t m_number = 0;
    bool m_isCorner = true;
};

inline bool operator==(Strand const& one, Strand const& other) {
    return one.m_number == other.m_number && one.m_isCorner == other.m_isCorner;
}
inline bool operator<(Strand const& one, Strand const& other) {
    return std::tie(one.m_number, one.m_isCorner) < std::tie(other.m_number, other.m_isCorner);
}

/// The way along a loop.
enum class Way { Back, Ahead };

inline Way Opposite(Way way) {
    return way == Way::Back ? Way::Ahead : Way::Back;
}

/// The corner that comes next that way.
inline std::size_t NextCorner(Boundary const& boundary, Strand const& strand, Way way) {
    if (way == Way::Ahead)
        return boundary.Next(strand.m_number);
    return strand.m_isCorner ? boundary.Previous(strand.m_number) : strand.m_number;
}

/// The same loop where it passes through a point further along, not beyond the next corner that way.
inline Strand Follow(Boundary const& boundary, Strand const& strand, Way way, Point const& point) {
    auto const next = NextCorner(boundary, strand, way);
    if (boundary.PointAt(next) == point)
        return {next, true};
    return {way == Way::Ahead || !strand.m_isCorner ? strand.m_number : next, false};
}

/// Where a ray lies that starts at a point of a loop.
enum class Side { Left, Right, OnAhead, OnBack };

/// On which side of `strand`, which passes through `point`, the ray from there through `target` lies, in the
/// direction of the loop; or along which way of it.
Side SideOf(Boundary const& boundary, Strand const& strand, Point const& point, Point const& target);

inline bool IsOn(Side side) {
    return side == Side::OnAhead || side == Side::OnBack;
}

} // namespace qel::SectrixTools::Geometry
