#pragma once

#include "sectrix/sections/cross_sections.h"

#include <algorithm>
#include <vector>

/// \file
/// The plain form of alignment and blending: every name looked up by a walk, every partner by a walk through the
/// list. It reads public accessors only and shares no code with the library.

namespace plain {

using namespace qel::Sectrix;

/// The position of a vertex, null when its index is not in the pool.
inline CSPosition const* At(Loop const& loop, std::size_t place) {
    int const index = loop.Vertices()[place].Index();
    bool found = false;
    return index >= 0 && index < loop.Positions().Count()
               ? &loop.Positions().GetPosition(std::uint64_t(index), found)
               : nullptr;
}

inline int NamedCount(Loop const& loop) {
    int count = 0;
    for (std::size_t i = 0; i < loop.Vertices().size(); ++i)
        count += At(loop, i) && !At(loop, i)->Name().empty();
    return count;
}

inline int NamedCount(CrossSection const& section) {
    int count = NamedCount(section.ExteriorLoop());
    for (auto const& loop : section.InteriorLoops())
        count += NamedCount(loop);
    return count;
}

inline int Shift(Loop const& loop, Loop const& other, bool& ok) {
    ok = NamedCount(loop) == NamedCount(other);
    int const n = ok ? int(loop.Vertices().size()) : 0;
    int shift = 0;
    bool isFixed = false;
    for (int i = 0; i < n; ++i) {
        auto const* position = At(loop, std::size_t(i));
        if (position && position->Name().empty())
            continue;
        int j = -1;
        for (std::size_t k = other.Vertices().size(); position && k-- > 0;)
            if (At(other, k) && At(other, k)->Name() == position->Name())
                j = int(k);
        int const c = (n - j + i) % n;
        ok = j >= 0 && (!isFixed || c == shift);
        if (!ok)
            return shift;
        shift = c;
        isFixed = true;
    }
    return shift;
}

template <class One, class Other>
bool Named(One const& one, Other const& other) {
    return one.Positions().NamedCount() > 0 && other.Positions().NamedCount() > 0;
}

inline bool IsCompatible(Loop const& loop, Loop const& other) {
    if (loop.Vertices().size() != other.Vertices().size())
        return false;
    bool ok = false;
    if (Named(loop, other))
        Shift(loop, other, ok);
    return Named(loop, other) ? ok : loop.Vertices() == other.Vertices();
}

/// The place of the partner, or -1.
template <class List, class Test>
int Find(List const& list, std::size_t place, bool isNamed, Test test) {
    if (place < list.size() && test(list[place]))
        return int(place);
    for (std::size_t i = 0; isNamed && i < list.size(); ++i)
        if (test(list[i]))
            return int(i);
    return -1;
}

inline int FindLoop(CrossSection const& section, Loop const& loop, std::size_t place) {
    return Find(section.InteriorLoops(), place, Named(section, loop),
                [&](Loop const& candidate) { return IsCompatible(loop, candidate); });
}

inline bool IsCompatible(CrossSection const& section, CrossSection const& other, bool convex) {
    if (Named(section, other) && NamedCount(section) != NamedCount(other))
        return false;
    if (convex) {
        auto const& loops = section.ConvexLoops();
        auto const& others = other.ConvexLoops();
        bool isSame = loops.size() == others.size();
        for (std::size_t i = 0; isSame && i < loops.size(); ++i)
            isSame = IsCompatible(loops[i], others[i]);
        return isSame;
    }
    bool isSame = section.InteriorLoops().size() == other.InteriorLoops().size() &&
                  IsCompatible(section.ExteriorLoop(), other.ExteriorLoop());
    for (std::size_t i = 0; isSame && i < other.InteriorLoops().size(); ++i)
        isSame = FindLoop(section, other.InteriorLoops()[i], i) >= 0;
    return isSame;
}

inline int FindSection(CrossSections const& set, CrossSection const& section, std::size_t place, bool convex) {
    return Find(set.Items(), place, Named(set, section),
                [&](CrossSection const& candidate) { return IsCompatible(section, candidate, convex); });
}

inline bool IsCompatible(CrossSections const& set, CrossSections const& other, bool convex) {
    bool isSame = set.Items().size() == other.Items().size();
    for (std::size_t i = 0; isSame && i < set.Items().size(); ++i)
        isSame = FindSection(other, set.Items()[i], i, convex) >= 0;
    return isSame;
}

/// The blend of two sets, without names of assembly parts and parameters.
class Blender {
public:
    Blender(CrossSections const& first, CrossSections const& second, double ratio, bool convex) : m_ratio(ratio) {
        bool const isSame = IsCompatible(first, second, convex);
        FillPool(first.Positions(), isSame ? &second.Positions() : nullptr);
        std::vector<int> added;
        for (std::size_t i = 0; i < first.Items().size(); ++i) {
            auto const& section = first.Items()[i];
            m_sections.emplace_back();
            if (isSame)
                Blend(section, second.Items()[std::size_t(FindSection(second, section, i, convex))]);
            else
                Copy(section);
            added.insert(added.end(), section.AddedVertices().begin(), section.AddedVertices().end());
        }
        std::sort(added.rbegin(), added.rend());
        for (int index : added)
            if (std::size_t(index) < m_pool.size())
                m_pool.erase(m_pool.begin() + index);
    }

    CrossSections Set() const {
        CSPositions pool;
        for (auto const& position : m_pool)
            pool.AddPosition(position.Name(), position.Position());
        CrossSections set(pool, false);
        auto& items = set.GetItems();
        items.assign(m_sections.size(), CrossSection(items[0]));
        for (std::size_t i = 0; i < items.size(); ++i)
            for (auto const& ring : m_sections[i]) {
                auto& loop = &ring == &m_sections[i][0] ? items[i].GetExteriorLoop() : items[i].AddInteriorLoop();
                for (auto const& vertex : ring)
                    loop.AddVertex(vertex.Index(), vertex.Exterior());
            }
        return set;
    }

private:
    void Move(CSPosition& target, CSPosition const& p, CSPosition const& q) const {
        for (std::size_t axis = 0; axis < 2; ++axis)
            target.Position()[axis] = (1.0 - m_ratio) * p.Position()[axis] + m_ratio * q.Position()[axis];
    }

    void FillPool(CSPositions const& first, CSPositions const* second) {
        for (int i = 0; i < first.Count(); ++i) {
            bool found = false;
            auto const& p = first.GetPosition(std::uint64_t(i), found);
            m_pool.push_back(p);
            auto const* q = !second            ? nullptr
                            : p.Name().empty() ? &second->GetPosition(std::uint64_t(i), found)
                                               : &second->GetPosition(p.Name(), found);
            if (q && found && q->Name() == p.Name())
                Move(m_pool.back(), p, *q);
        }
    }

    void Copy(CrossSection const& section) {
        section.ConvexLoops();
        m_sections.back().push_back(section.ExteriorLoop().Vertices());
        for (auto const& loop : section.InteriorLoops())
            m_sections.back().push_back(loop.Vertices());
    }

    void Blend(CrossSection const& first, CrossSection const& second) {
        Blend(first.ExteriorLoop(), second.ExteriorLoop());
        for (std::size_t i = 0; i < second.InteriorLoops().size(); ++i) {
            int const place = FindLoop(first, second.InteriorLoops()[i], i);
            if (place >= 0)
                Blend(first.InteriorLoops()[std::size_t(place)], second.InteriorLoops()[i]);
        }
    }

    void Blend(Loop const& first, Loop const& second) {
        bool ok = false;
        int const shift = std::max(0, Shift(first, second, ok));
        int const ns = int(second.Vertices().size());
        auto& ring = m_sections.back().emplace_back();
        for (int k = 0; k < std::min(int(first.Vertices().size()), ns); ++k) {
            auto const* p = At(first, std::size_t(k));
            auto const* q = At(second, std::size_t(((k - shift) % ns + ns) % ns));
            auto const& vertex = first.Vertices()[std::size_t(k)];
            if (!p || !q || vertex.Index() >= int(m_pool.size()))
                continue;
            Move(m_pool[std::size_t(vertex.Index())], *p, *q);
            ring.push_back(vertex);
        }
    }

    double m_ratio;
    std::vector<CSPosition> m_pool;
    /// Loops, the exterior one first.
    std::vector<std::vector<std::vector<Vertex>>> m_sections;
};

} // namespace plain
