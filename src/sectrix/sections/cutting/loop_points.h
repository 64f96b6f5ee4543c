#pragma once

#include "sectrix/sections/cutting/scratch.h"
#include "sectrix/sections/loop.h"

#include <cstdint>
#include <vector>

/// \file
/// The points of a loop, side by side for the algorithms that go over them again and again.

namespace qel::Sectrix {

/// Appends the points that vertices have in a pool to `points`, the origin for what is not in it; false where there
/// is such a vertex.
inline bool AppendPoints(std::vector<Vertex> const& vertices, CSPositions const& pool,
                         Scratch::List<Vec<2, double>>& points) {
    auto const first = points.size();
    points.resize(first + vertices.size());
    auto* point = points.data() + first;
    bool isWhole = true;
    for (auto const& vertex : vertices) {
        bool found = false;
        // What is not found is the pool's invalid position, which a host may have written into.
        auto const& position = pool.GetPosition(static_cast<std::uint64_t>(vertex.Index()), found);
        *point++ = found ? position.Position() : Vec<2, double>{};
        isWhole = isWhole && found;
    }
    return isWhole;
}

/// Puts the points there in place of what `points` held.
inline bool ReadPoints(std::vector<Vertex> const& vertices, CSPositions const& pool,
                       Scratch::List<Vec<2, double>>& points) {
    points.clear();
    return AppendPoints(vertices, pool, points);
}

} // namespace qel::Sectrix
