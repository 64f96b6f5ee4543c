#pragma once

#include "sectrix/sections/cross_sections.h"
#include "support/shapes.h"

/// \file
/// From lists of indices, or from a shape, to a set of sections.

namespace shapes {

/// The loops of a section, by the indices of their vertices, the exterior loop first.
using Loops = std::vector<std::vector<int>>;

/// A set over `pool` with these sections.
/// \param unflagged  a vertex has the flag false when its index is a multiple of this; 0 for no such vertex.
inline qel::Sectrix::CrossSections MakeSet(qel::Sectrix::CSPositions const& pool,
                                           std::vector<Loops> const& sections, int unflagged = 0) {
    qel::Sectrix::CrossSections set(pool, false);
    auto& items = set.GetItems();
    items.assign(sections.size(), qel::Sectrix::CrossSection(items[0]));
    for (std::size_t i = 0; i < sections.size(); ++i)
        for (auto const& indices : sections[i]) {
            auto& loop = &indices == &sections[i][0] ? items[i].GetExteriorLoop() : items[i].AddInteriorLoop();
            for (int const index : indices)
                loop.AddVertex(index, unflagged == 0 || index % unflagged != 0);
        }
    return set;
}

/// One section, every point an unnamed position.
inline qel::Sectrix::CrossSections MakeSet(Shape const& shape) {
    qel::Sectrix::CSPositions pool;
    for (auto const& point : shape.points)
        pool.AddPosition({point.x, point.y});
    return MakeSet(pool, {shape.loops});
}

} // namespace shapes
