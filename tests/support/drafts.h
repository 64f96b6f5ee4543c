#pragma once

#include "support/shape_set.h"

#include <string>

/// \file
/// Sets of sections with names, as lists of corners.

namespace shapes {

/// In place of a name: the vertex has an index that is not in the pool.
inline char const* const kNoPosition = "!";
/// In place of a name: the vertex has the index of the position before its own.
inline char const* const kPositionBefore = "*";

struct Corner {
    std::string name = {};
    qel::Vec<2, double> point = {};
};
using Ring = std::vector<Corner>;
/// Rings by section, the exterior one first.
using Draft = std::vector<std::vector<Ring>>;

/// The set of these sections, one position for each corner, in this order. Three positions that no section uses
/// stand in front of them, so that an index is not a place. Every ninth flag is false. Where a vertex has no
/// position, its index is -1 or that behind the end of the pool, in turn.
inline qel::Sectrix::CrossSections MakeSet(Draft const& draft) {
    qel::Sectrix::CSPositions pool;
    for (int i = 0; i < 3; ++i)
        pool.AddPosition({});
    for (auto const& rings : draft)
        for (auto const& ring : rings)
            for (auto const& [name, point] : ring)
                pool.AddPosition(name == kNoPosition || name == kPositionBefore ? "" : name, point);
    std::vector<Loops> sections;
    int index = 3;
    for (auto const& rings : draft) {
        auto& loops = sections.emplace_back();
        for (auto const& ring : rings) {
            auto& loop = loops.emplace_back();
            for (auto const& corner : ring) {
                int const stray = index % 2 == 0 ? -1 : pool.Count();
                loop.push_back(corner.name == kNoPosition       ? stray
                               : corner.name == kPositionBefore ? index - 1
                                                                : index);
                ++index;
            }
        }
    }
    return MakeSet(pool, sections, 9);
}

} // namespace shapes
