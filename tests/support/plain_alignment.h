#pragma once

#include "support/section_text.h"

#include <algorithm>
#include <set>
#include <sstream>

/// \file
/// The plain form of alignment and blending: every name and every partner found by a walk. It shares with the
/// library only what is judged elsewhere.

namespace plain {

using namespace qel::Sectrix;

inline CSPosition const* At(Loop const& loop, int place) {
    bool found = false;
    auto const index = std::uint64_t(std::int64_t{loop.Vertices()[std::size_t(place)].Index()});
    auto const& position = loop.Positions().GetPosition(index, found);
    return found ? &position : nullptr;
}

inline int Shift(Loop const& loop, Loop const& other, bool& ok) {
    ok = loop.GetNamedPositionCount() == other.GetNamedPositionCount();
    int const n = ok ? int(loop.Vertices().size()) : 0;
    int shift = 0;
    bool isFixed = false;
    for (int i = 0; i < n; ++i) {
        auto const* position = At(loop, i);
        if (position && position->Name().empty())
            continue;
        int const j = position ? other.NamedPositionIndex(position->Name()) : -1;
        int const c = (n - j + i) % n;
        ok = j >= 0 && (!isFixed || c == shift);
        if (!ok)
            break;
        shift = c;
        isFixed = true;
    }
    return shift;
}

template <class One, class Other>
bool AreNamed(One const& one, Other const& other) {
    return one.Positions().NamedCount() > 0 && other.Positions().NamedCount() > 0;
}

inline bool IsCompatible(Loop const& loop, Loop const& other) {
    if (loop.Vertices().size() != other.Vertices().size())
        return false;
    bool ok = loop.Vertices() == other.Vertices();
    if (AreNamed(loop, other))
        Shift(loop, other, ok);
    return ok;
}

/// The partner in the list, or null.
template <class Item, class Test>
Item const* Find(std::vector<Item> const& list, std::size_t place, bool byName, Test test) {
    if (place < list.size() && test(list[place]))
        return &list[place];
    for (std::size_t i = 0; byName && i < list.size(); ++i)
        if (test(list[i]))
            return &list[i];
    return nullptr;
}

inline Loop const* FindLoop(CrossSection const& section, Loop const& loop, std::size_t place) {
    return Find(section.InteriorLoops(), place, AreNamed(section, loop),
                [&](Loop const& candidate) { return IsCompatible(loop, candidate); });
}

inline bool IsCompatible(CrossSection const& section, CrossSection const& other, bool convex) {
    if (AreNamed(section, other) && section.GetNamedPositionCount() != other.GetNamedPositionCount())
        return false;
    auto const& loops = convex ? section.ConvexLoops() : section.InteriorLoops();
    auto const& others = convex ? other.ConvexLoops() : other.InteriorLoops();
    bool isSame =
        loops.size() == others.size() && (convex || IsCompatible(section.ExteriorLoop(), other.ExteriorLoop()));
    for (std::size_t i = 0; isSame && i < others.size(); ++i)
        isSame = convex ? IsCompatible(loops[i], others[i]) : FindLoop(section, others[i], i) != nullptr;
    return isSame;
}

inline CrossSection const* FindSection(CrossSections const& set, CrossSection const& section, std::size_t place,
                                       bool convex) {
    return Find(set.Items(), place, AreNamed(set, section),
                [&](CrossSection const& candidate) { return IsCompatible(section, candidate, convex); });
}

inline bool IsCompatible(CrossSections const& set, CrossSections const& other, bool convex) {
    bool isSame = set.Items().size() == other.Items().size();
    for (std::size_t i = 0; isSame && i < set.Items().size(); ++i)
        isSame = FindSection(other, set.Items()[i], i, convex) != nullptr;
    return isSame;
}

inline double Blend(double p, double q, double ratio) {
    return (1.0 - ratio) * p + ratio * q;
}

/// Fills `blend`, a loop over `pool`.
inline void BlendLoop(Loop const& first, Loop const& second, CSPositions& pool, double ratio, Loop& blend) {
    bool ok = false, found = false;
    int const shift = std::max(Shift(first, second, ok), 0);
    int const size = int(first.Vertices().size()), otherSize = int(second.Vertices().size());
    for (int k = 0; k < std::min(size, otherSize); ++k) {
        auto const& vertex = first.Vertices()[std::size_t(k)];
        auto const *p = At(first, k), *q = At(second, (otherSize - shift % otherSize + k) % otherSize);
        auto& moved = pool.GetPosition(std::uint64_t(std::int64_t{vertex.Index()}), found);
        if (!found || !p || !q)
            continue;
        for (std::size_t axis = 0; axis < 2; ++axis)
            moved.Position()[axis] = Blend(p->Position()[axis], q->Position()[axis], ratio);
        blend.AddVertex(vertex.Index(), vertex.Exterior());
    }
}

/// The blend of two sections without names of their own.
inline CrossSection BlendSection(CrossSection const& first, CrossSection const& second, CSPositions& pool,
                                 double ratio) {
    CrossSection blend(pool, false);
    BlendLoop(first.ExteriorLoop(), second.ExteriorLoop(), pool, ratio, blend.GetExteriorLoop());
    for (std::size_t i = 0; i < second.InteriorLoops().size(); ++i)
        if (auto const* partner = FindLoop(first, second.InteriorLoops()[i], i))
            BlendLoop(*partner, second.InteriorLoops()[i], pool, ratio, blend.AddInteriorLoop());
    return blend;
}

/// The parameters of the blended set, a line each.
inline std::string ParametersText(CrossSections const& first, CrossSections const& second, double ratio,
                                  bool isPair) {
    std::ostringstream text;
    text << std::hexfloat;
    for (auto const& [name, value] : first.Parameters())
        if (!isPair)
            text << name << '=' << value << '\n';
        else if (auto const other = second.Parameters().find(name); other != second.Parameters().end())
            text << name << '=' << Blend(value, other->second, ratio) << '\n';
    return text.str();
}

/// What the blended set reads as, put together section by section.
inline std::string BlendText(CrossSections const& first, CrossSections const& second, double ratio, bool convex) {
    bool const isPair = IsCompatible(first, second, convex);
    CSPositions pool;
    if (isPair)
        pool.SetPositions(first.Positions(), second.Positions(), ratio);
    else
        pool.SetPositions(first.Positions());
    std::vector<CrossSection> sections;
    std::set<int> added;
    for (std::size_t i = 0; i < first.Items().size(); ++i) {
        auto const& section = first.Items()[i];
        if (isPair)
            sections.push_back(BlendSection(section, *FindSection(second, section, i, convex), pool, ratio));
        else
            sections.emplace_back(section, pool);
        added.insert(section.AddedVertices().begin(), section.AddedVertices().end());
    }
    for (auto index = added.rbegin(); index != added.rend(); ++index)
        pool.RemovePosition(std::uint64_t(*index));
    CrossSections set(pool, false);
    set.GetItems() = sections;
    return sectrix_tests::SetText(set) + ParametersText(first, second, ratio, isPair);
}

} // namespace plain
