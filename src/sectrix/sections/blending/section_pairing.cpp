#include "sectrix/sections/blending/section_pairing.h"
#include "sectrix/sections/blending/loop_alignment.h"
#include "sectrix/sections/blending/name_keys.h"

namespace qel::Sectrix {

HolePair HoleSearch::Find(Loop const& hole, std::uint64_t place) {
    auto const& loops = m_searched.InteriorLoops();
    HolePair pair;
    auto const isPartner = [&](Loop const& loop) {
        auto const shift = ShiftOfPartner(loop, hole);
        if (shift)
            pair = {&loop, *shift};
        return shift.has_value();
    };
    if (place < loops.size() && isPartner(loops[place]))
        return pair;
    if (!HaveNames(m_searched.Positions(), hole.Positions()))
        return pair;
    bool const byKey = hole.Positions().NamedCount() >= 1 && HaveNames(loops);
    auto const* loop = byKey ? FindByKey(hole) : nullptr;
    // Loops of one key differ only where the key is that of other names by chance.
    if (!byKey || (loop && !isPartner(*loop) && hole.IsCompatible(hole)))
        FindFirst(loops, loops.size(), true, isPartner);
    return pair;
}

Loop const* HoleSearch::FindByKey(Loop const& hole) {
    auto const& loops = m_searched.InteriorLoops();
    if (m_keyed.empty()) {
        for (std::size_t place = 0; place < loops.size(); ++place)
            m_keyed.emplace_back(KeyOf(loops[place]), place);
        std::sort(m_keyed.begin(), m_keyed.end());
    }
    auto const key = KeyOf(hole);
    auto const found = std::lower_bound(m_keyed.begin(), m_keyed.end(), std::pair(key, std::size_t{0}));
    return found != m_keyed.end() && found->first == key ? &loops[found->second] : nullptr;
}

Loop const& CrossSection::GetCompatibleInteriorLoop(Loop const& loop, std::uint64_t place, bool& found) const {
    auto const* partner = FindFirst(m_interiorLoops, place, HaveNames(*m_positions, loop.Positions()),
                                    [&loop](Loop const& candidate) { return loop.IsCompatible(candidate); });
    found = partner != nullptr;
    return found ? *partner : loop;
}

bool CrossSection::IsCompatible(CrossSection const& other, bool convex) const {
    if (!convex) {
        SectionPair pair;
        return AreCompatible(*this, other, pair);
    }
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
    if (!exteriorShift)
        return false;
    pair.m_first = &first;
    pair.m_second = &second;
    pair.m_exteriorShift = *exteriorShift;
    pair.m_holes.clear();
    HoleSearch search(first);
    for (std::size_t place = 0; place < holes.size(); ++place) {
        pair.m_holes.push_back(search.Find(holes[place], place));
        if (!pair.m_holes.back().m_partner)
            return false;
    }
    return true;
}

SectionPair PairLoops(CrossSection const& first, CrossSection const& second) {
    SectionPair pair{&first, &second, BlendShift(first.ExteriorLoop(), second.ExteriorLoop()), {}};
    HoleSearch search(first);
    for (std::size_t place = 0; place < second.InteriorLoops().size(); ++place)
        pair.m_holes.push_back(search.Find(second.InteriorLoops()[place], place));
    return pair;
}

} // namespace qel::Sectrix
