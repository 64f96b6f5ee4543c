#include "sectrix/sections/blending/set_pairing.h"
#include "sectrix/sections/blending/loop_alignment.h"

#include <cassert>
#include <numeric>

namespace qel::Sectrix {

CrossSection const* SectionSearch::Find(CrossSection const& section, std::uint64_t place) {
    auto const& items = m_searched.Items();
    if (place < items.size() && IsPartner(section, items[place]))
        return &items[place];
    if (!HaveNames(m_searched.Positions(), section.Positions()))
        return nullptr;
    return CountNames() ? FindByKey(section) : Walk(section);
}

bool SectionSearch::IsPartner(CrossSection const& section, CrossSection const& candidate) {
    if (!m_convex)
        return AreCompatible(section, candidate, m_pair);
    m_pair.m_first = &section;
    m_pair.m_second = &candidate;
    return section.IsCompatible(candidate, true);
}

/// The first partner in list order, whatever the keys say.
CrossSection const* SectionSearch::Walk(CrossSection const& section) {
    auto const& items = m_searched.Items();
    return FindFirst(items, items.size(), true,
                     [&](CrossSection const& candidate) { return IsPartner(section, candidate); });
}

/// Counts once; false when a search by keys is not possible.
bool SectionSearch::CountNames() {
    if (!m_counts.empty())
        return m_isKeyed;
    for (auto const& section : m_searched.Items()) {
        // Over a pool without names, sections are compared without a look at the numbers.
        m_isKeyed = m_isKeyed && section.Positions().NamedCount() >= 1;
        m_counts.push_back(section.GetNamedPositionCount());
        m_filed.emplace(m_counts.back(), 0);
    }
    return m_isKeyed;
}

CrossSection const* SectionSearch::FindByKey(CrossSection const& section) {
    auto const count = section.GetNamedPositionCount();
    auto const filed = m_filed.find(count);
    if (filed == m_filed.end())
        return nullptr;
    SectionKey key;
    if (!key.Set(section, m_convex, count) || !FileUntilFound(key.Whole(), count, filed->second))
        return Walk(section);
    auto const& items = m_searched.Items();
    auto const same = m_firstOf.find(key.Whole());
    auto best = same != m_firstOf.end() ? same->second : items.size();
    auto const end = m_repeating.lower_bound(key.m_holes.size());
    for (auto group = m_repeating.begin(); group != end; ++group)
        for (auto const& [place, other] : group->second)
            if (place < best && key.HasMoreThan(other) && IsPartner(section, items[place]))
                best = place;
    if (best == items.size())
        return nullptr;
    // Sections of one key differ only where the key is that of other names by chance, or where the outline cannot
    // line up with any.
    return IsPartner(section, items[best]) ? &items[best] : Walk(section);
}

/// Goes on through the sections with so many names where it was left, and so builds convex loops in list order and
/// no further than to the partner. False once a section is met that has no key.
bool SectionSearch::FileUntilFound(std::uint64_t wanted, std::uint64_t count, std::size_t& next) {
    SectionKey key;
    for (; m_isKeyed && next < m_counts.size() && m_firstOf.count(wanted) == 0; ++next) {
        if (m_counts[next] != count)
            continue;
        auto const& section = m_searched.Items()[next];
        auto const& holes = section.InteriorLoops();
        m_isKeyed = key.Set(section, m_convex, count);
        // A hole that bears a name twice or has an index that is not in its pool has no partner anywhere.
        if (!m_isKeyed || (!m_convex && !std::all_of(holes.begin(), holes.end(),
                                                     [](Loop const& hole) { return hole.IsCompatible(hole); })))
            continue;
        m_firstOf.emplace(key.Whole(), next);
        if (!m_convex && key.m_holes.size() < holes.size())
            m_repeating[key.m_holes.size()].emplace_back(next, key);
    }
    return m_isKeyed;
}

namespace {

/// Hands over the pair of each section of `first` with its partner, in order; false once there is none.
template <class Take>
bool FindPartners(CrossSections const& first, CrossSections const& second, bool convex, Take const& take) {
    if (first.Items().size() != second.Items().size())
        return false;
    SectionSearch search(second, convex);
    for (std::size_t place = 0; place < first.Items().size(); ++place) {
        if (!search.Find(first.Items()[place], place))
            return false;
        take(search.Pair());
    }
    return true;
}

/// How many positions the builds of convex loops have added.
std::size_t CountAdded(CrossSections const& set) {
    return std::accumulate(
        set.Items().begin(), set.Items().end(), std::size_t{0},
        [](std::size_t sum, CrossSection const& section) { return sum + section.AddedVertices().size(); });
}

} // namespace

CrossSection const& CrossSections::GetCompatibleSection(CrossSection const& section, std::uint64_t place,
                                                        bool convex, bool& found) const {
    auto const* partner =
        FindFirst(m_items, place, HaveNames(m_positions, section.Positions()),
                  [&](CrossSection const& candidate) { return section.IsCompatible(candidate, convex); });
    found = partner != nullptr;
    return found ? *partner : section;
}

bool CrossSections::IsCompatible(CrossSections const& other, bool convex) const {
    return FindPartners(*this, other, convex, [](SectionPair const&) {});
}

std::optional<std::vector<SectionPair>> PairSections(CrossSections const& first, CrossSections const& second,
                                                     bool convex) {
    std::vector<SectionPair> pairs;
    auto const collect = [&] {
        pairs.clear();
        pairs.reserve(first.Items().size());
        return FindPartners(first, second, convex, [&](SectionPair const& pair) { pairs.push_back(pair); });
    };
    auto const addedBefore = CountAdded(first) + CountAdded(second);
    if (!collect())
        return std::nullopt;
    if (CountAdded(first) + CountAdded(second) != addedBefore) {
        // An index that has become valid stands for a position without a name: it can only make loops line up.
        [[maybe_unused]] bool const isStillTrue = collect();
        assert(isStillTrue);
    }
    if (convex)
        for (auto& pair : pairs)
            pair = PairLoops(*pair.m_first, *pair.m_second);
    return pairs;
}

} // namespace qel::Sectrix
