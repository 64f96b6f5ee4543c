#pragma once

#include "sectrix/sections/cross_sections.h"
#include "support/shapes.h"

/// \file
/// From a shape to a set of one section.

namespace shapes {

/// Every point an unnamed position, the first loop exterior and the others interior, every flag true.
inline qel::Sectrix::CrossSections MakeSet(Shape const& shape) {
    qel::Sectrix::CSPositions pool;
    for (auto const& point : shape.points)
        pool.AddPosition({point.x, point.y});
    qel::Sectrix::CrossSections set(pool, false);
    auto& section = set.GetItems()[0];
    for (std::size_t i = 0; i < shape.loops.size(); ++i) {
        auto& loop = i == 0 ? section.GetExteriorLoop() : section.AddInteriorLoop();
        for (int index : shape.loops[i])
            loop.AddVertex(index, true);
    }
    return set;
}

} // namespace shapes
