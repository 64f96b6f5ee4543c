#include "sectrix/sections/blending/section_pairing.h"
#include "sectrix/sections/blending/loop_alignment.h"

#include <utility>

namespace qel::Sectrix {

namespace {

/// Finds the partners of holes among the interior loops of one section.
class HoleSearch {
public:
    explicit HoleSearch(CrossSection const& searched)
        : m_pool(searched.Positions()), m_loops(searched.InteriorLoops()) {}

    /// The partner of `hole`, `place` tried first.
    HolePair Find(Loop const& hole, std::size_t place) {
        HolePair pair;
        auto const isPartner = [&](Loop const& loop) {
            auto const shift = ShiftOfPartner(loop, hole);
            if (shift)
                pair = {&loop, *shift};
            return shift.has_value();
        };
        if ((place < m_loops.size() && isPartner(m_loops[place])) || !HaveNames(m_pool, hole.Positions()))
            return pair;
        bool const byKey = HaveKeys(m_loops);
        auto const* loop = byKey ? FindByKey(hole) : nullptr;
        // A good loop does not fit the first of its key only where other names have the same key by chance.
        if (!byKey || (loop && !isPartner(*loop) && hole.IsCompatible(hole)))
            (void)std::any_of(m_loops.begin(), m_loops.end(), isPartner); // which keeps the first in `pair`
        return pair;
    }

private:
    /// The first loop that has the key of `hole`, or null.
    Loop const* FindByKey(Loop const& hole) {
        if (m_keyed.empty()) {
            for (std::size_t place = 0; place < m_loops.size(); ++place)
                m_keyed.emplace_back(KeyOf(m_loops[place]), place);
            std::sort(m_keyed.begin(), m_keyed.end());
        }
        auto const key = KeyOf(hole);
        auto const found = std::lower_bound(m_keyed.begin(), m_keyed.end(), std::pair(key, std::size_t{0}));
        return found != m_keyed.end() && found->first == key ? &m_loops[found->second] : nullptr;
    }

    CSPositions const& m_pool;
    std::vector<Loop> const& m_loops;
    /// The keys of the loops and their places, ascending. Empty until a hole does not fit the place to try first.
    std::vector<std::pair<std::uint64_t, std::size_t>> m_keyed;
};

} // namespace

Loop const& CrossSection::GetCompatibleInteriorLoop(Loop const& loop, std::uint64_t place, bool& found) const {
    auto const* partner = FindFirst(m_interiorLoops, place, HaveNames(*m_positions, loop.Positions()),
                                    [&loop](Loop const& candidate) { return loop.IsCompatible(candidate); });
    found = partner != nullptr;
    return found ? *partner : loop;
}

bool CrossSection::IsCompatible(CrossSection const& other, bool convex) const {
    SectionPair pair;
    if (!convex)
        return AreCompatible(*this, other, pair);
    if (HaveNames(*m_positions, *other.m_positions) && GetNamedPositionCount() != other.GetNamedPositionCount())
        return false;
    // Built in this order, which the indices of the positions that are added depend on.
    auto const& loops = ConvexLoops();
    auto const& others = other.ConvexLoops();
    return std::equal(loops.begin(), loops.end(), others.begin(), others.end(),
                      [](Loop const& one, Loop const& another) { return one.IsCompatible(another); });
}

bool AreCompatible(CrossSection const& first, CrossSection const& second, SectionPair& pair) {
    auto const& holes = second.InteriorLoops();
    if (first.InteriorLoops().size() != holes.size() ||
        (HaveNames(first.Positions(), second.Positions()) &&
         first.GetNamedPositionCount() != second.GetNamedPositionCount()))
        return false;
    auto const exteriorShift = ShiftOfCompatible(first.ExteriorLoop(), second.ExteriorLoop());
    pair.m_first = &first;
    pair.m_second = &second;
    pair.m_exteriorShift = exteriorShift.value_or(0);
    pair.m_holes.clear();
    HoleSearch search(first);
    bool isGood = exteriorShift.has_value();
    for (std::size_t place = 0; isGood && place < holes.size(); ++place) {
        pair.m_holes.push_back(search.Find(holes[place], place));
        isGood = pair.m_holes.back().m_partner != nullptr;
    }
    return isGood;
}

SectionPair PairLoops(CrossSection const& first, CrossSection const& second) {
    SectionPair pair{&first, &second, BlendShift(first.ExteriorLoop(), second.ExteriorLoop()), {}};
    HoleSearch search(first);
    for (std::size_t place = 0; place < second.InteriorLoops().size(); ++place)
        pair.m_holes.push_back(search.Find(second.InteriorLoops()[place], place));
    return pair;
}

} // namespace qel::Sectrix
