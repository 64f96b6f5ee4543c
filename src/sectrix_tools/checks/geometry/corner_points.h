#pragma once

#include "sectrix/sections/loop.h"
#include "sectrix_tools/checks/geometry/point.h"

#include <cstdint>
#include <optional>
#include <vector>

/// \file
/// The points of a loop.

namespace qel::SectrixTools::Geometry {

/// Where a vertex of a loop is; nothing when its index is not in the pool.
inline std::optional<Point> PointOf(Sectrix::Loop const& loop, Sectrix::Vertex const& vertex) {
    bool found = false;
    auto const& position =
        loop.Positions().GetPosition(static_cast<std::uint64_t>(vertex.Index()), found).Position();
    return found ? std::optional(Point{position[0], position[1]}) : std::nullopt;
}

/// The points of all vertices whose index is in the pool.
inline std::vector<Point> CornerPoints(Sectrix::Loop const& loop) {
    std::vector<Point> points;
    points.reserve(loop.Vertices().size());
    for (auto const& vertex : loop.Vertices())
        if (auto const point = PointOf(loop, vertex))
            points.push_back(*point);
    return points;
}

} // namespace qel::SectrixTools::Geometry
