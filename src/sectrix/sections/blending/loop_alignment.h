#pragma once

#include "sectrix/sections/loop.h"

#include <algorithm>
#include <cassert>
#include <cstdint>
#include <optional>
#include <string>
#include <vector>

/// \file
/// Internal: two loops laid one on the other, by their names or vertex by vertex, and numbers made of their names.

namespace qel::Sectrix {

/// True when loops over these pools are aligned by names.
inline bool HaveNames(CSPositions const& first, CSPositions const& second) {
    return first.NamedCount() >= 1 && second.NamedCount() >= 1;
}

/// The name of the vertex at `place`, which must be in the loop; null when the vertex is not a named one.
inline std::string const* NameAt(Loop const& loop, std::size_t place) {
    assert(place < loop.Vertices().size());
    bool found = false;
    auto const index = static_cast<std::uint64_t>(loop.Vertices()[place].Index());
    auto const& name = loop.Positions().GetPosition(index, found).Name();
    return found && !name.empty() ? &name : nullptr;
}

/// The shift by which a blend pairs the vertices of two loops: that of `first` against `second`, good or not; 0
/// where that is negative.
int BlendShift(Loop const& first, Loop const& second);

/// `BlendShift` of two loops of which `first` is compatible with `second`; nothing when it is not.
std::optional<int> ShiftOfCompatible(Loop const& first, Loop const& second);

/// `BlendShift` of two holes of which `second` is compatible with `first`, the other way round than it is blended;
/// nothing when it is not.
std::optional<int> ShiftOfPartner(Loop const& first, Loop const& second);

/// A key that two loops have in common whenever they line up by their names. It says where to look for a partner;
/// what it leads to is tested before it counts.
std::uint64_t KeyOf(Loop const& loop);

/// True when all these loops are over pools with names, without which their keys say nothing.
bool HaveKeys(std::vector<Loop> const& loops);

/// Scatters two numbers over the 64 bits of one.
std::uint64_t Mix(std::uint64_t first, std::uint64_t second);

/// The item at `place` when it passes the test; else, with `byName` true, the first that does; else null.
template <class Item, class Test>
Item const* FindFirst(std::vector<Item> const& items, std::uint64_t place, bool byName, Test const& test) {
    if (place < items.size() && test(items[place]))
        return &items[place];
    if (!byName)
        return nullptr;
    auto const first = std::find_if(items.begin(), items.end(), test);
    return first != items.end() ? &*first : nullptr;
}

} // namespace qel::Sectrix
