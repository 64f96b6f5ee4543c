#pragma once

#include "sectrix/sections/cross_sections.h"

#include <string>
#include <vector>

/// \file
/// Sets of sections with names, as lists of corners.

namespace shapes {

/// A bang for a name is a vertex without a position, a star the vertex before once more.
struct Corner {
    std::string name = {};
    qel::Vec<2, double> point = {};
};
using Ring = std::vector<Corner>;
/// Rings by section, the exterior one first.
using Draft = std::vector<std::vector<Ring>>;

/// Unnamed positions that stand in front of all others, so that an index is not a place.
inline constexpr int kLeading = 3;

/// The set of these sections, every ninth flag false. A vertex without a position has the index -1 or that behind
/// the end, in turn.
inline qel::Sectrix::CrossSections MakeSet(Draft const& draft) {
    qel::Sectrix::CSPositions pool;
    for (int i = 0; i < kLeading; ++i)
        pool.AddPosition({});
    for (auto const& section : draft)
        for (auto const& ring : section)
            for (auto const& [name, point] : ring)
                pool.AddPosition(name == "!" || name == "*" ? "" : name, point);
    qel::Sectrix::CrossSections set(pool, false);
    auto& items = set.GetItems();
    items.assign(draft.size(), qel::Sectrix::CrossSection(items[0]));
    int index = kLeading;
    for (std::size_t i = 0; i < draft.size(); ++i)
        for (auto const& ring : draft[i]) {
            auto& loop = &ring == &draft[i][0] ? items[i].GetExteriorLoop() : items[i].AddInteriorLoop();
            for (auto const& [name, point] : ring) {
                int const stray = index % 2 == 0 ? -1 : pool.Count();
                loop.AddVertex(name == "!" ? stray : name == "*" ? index - 1 : index, index % 9 != 0);
                ++index;
            }
        }
    return set;
}

} // namespace shapes
