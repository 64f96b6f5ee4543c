#include "sectrix/sections/blending/partner_search.h"

#include <algorithm>
#include <functional>
#include <limits>
#include <string>

namespace qel::Sectrix {

namespace {

/// Lists shorter than this are walked: the walk is over before their keys are made.
std::size_t const kLeastKeyedCount = 32;

/// The key of what must always be looked at, since a key made of names does not speak for it.
std::uint64_t const kAnyKey = std::numeric_limits<std::uint64_t>::max();

/// Keys made of names are less than this; those by which a section stands under one of its loops have it added.
std::uint64_t const kLoopMark = std::uint64_t{1} << 62;

/// Scatters two numbers over the 64 bits of one.
std::uint64_t Mix(std::uint64_t first, std::uint64_t second) {
    std::uint64_t mixed = first * 0x9e3779b97f4a7c15u + second;
    mixed = (mixed ^ (mixed >> 32)) * 0xd6e8feb86659fd93u;
    mixed = (mixed ^ (mixed >> 32)) * 0xd6e8feb86659fd93u;
    return mixed ^ (mixed >> 32);
}

/// A key that two loops have in common whenever they line up by their names; `kAnyKey` for a loop over a pool
/// without names.
///
/// Lining up means the same cycle of names with the same steps between them. So the key is a sum over the named
/// vertices, of the name, the steps to the next and its name: it is the same wherever the cycle is entered.
std::uint64_t KeyOf(Loop const& loop) {
    if (loop.Positions().NamedCount() < 1)
        return kAnyKey;
    struct Named {
        std::uint64_t m_place = 0;
        std::uint64_t m_name = 0;
    };
    std::optional<Named> first;
    Named last;
    auto const size = loop.Vertices().size();
    std::uint64_t sum = 0;
    for (std::size_t place = 0; place < size; ++place) {
        auto const* name = FindName(loop, place);
        if (!name)
            continue;
        Named const named{place, std::hash<std::string>{}(*name)};
        if (first)
            sum += Mix(Mix(last.m_name, named.m_name), named.m_place - last.m_place);
        else
            first = named;
        last = named;
    }
    if (first)
        sum += Mix(Mix(last.m_name, first->m_name), size + first->m_place - last.m_place);
    return Mix(size, sum) % kLoopMark;
}

/// True when `loop` can be compatible with a loop over a pool with names: one that bears a name twice or has an
/// index that is not in its pool does not even line up with itself.
bool CanLineUp(Loop const& loop) {
    return loop.IsCompatible(loop);
}

/// What the keys of a section are made of.
struct SectionKey {
    /// False when some loop is not compared by names.
    bool m_isNamed = true;
    /// Of what must be equal: the number of named positions, that of interior loops, the exterior loop. Where
    /// convex loops are compared, of all that is compared.
    std::uint64_t m_base = 0;
    /// The keys of the interior loops, each once, ascending.
    std::vector<std::uint64_t> m_interior;
    /// True when interior loops have a key in common.
    bool m_hasRepeats = false;

    /// For a section that differs in none of the keys.
    std::uint64_t Whole() const {
        std::uint64_t key = m_base;
        for (auto const loop : m_interior)
            key = Mix(key, loop);
        return key % kLoopMark;
    }
    /// For a section of which this is one of the interior loops.
    std::uint64_t WithLoop(std::uint64_t loop) const { return Mix(m_base, loop) % kLoopMark + kLoopMark; }
};

/// Builds the convex loops when they are what is compared.
///
/// \param count  of the section's named positions.
SectionKey MakeSectionKey(CrossSection const& section, bool convex, std::uint64_t count) {
    SectionKey key;
    auto const add = [&key](Loop const& loop) {
        auto const loopKey = KeyOf(loop);
        key.m_isNamed = key.m_isNamed && loopKey != kAnyKey;
        return loopKey;
    };
    auto const& loops = convex ? section.ConvexLoops() : section.InteriorLoops();
    key.m_base = Mix(count, loops.size());
    if (convex) {
        for (auto const& loop : loops)
            key.m_base = Mix(key.m_base, add(loop));
        return key;
    }
    key.m_base = Mix(key.m_base, add(section.ExteriorLoop()));
    for (auto const& loop : loops)
        key.m_interior.push_back(add(loop));
    std::sort(key.m_interior.begin(), key.m_interior.end());
    key.m_interior.erase(std::unique(key.m_interior.begin(), key.m_interior.end()), key.m_interior.end());
    key.m_hasRepeats = key.m_interior.size() < loops.size();
    return key;
}

/// All keys under which a partner of the section may stand.
std::vector<std::uint64_t> SearchKeys(SectionKey const& key) {
    std::vector<std::uint64_t> keys{kAnyKey, key.Whole()};
    for (auto const loop : key.m_interior)
        keys.push_back(key.WithLoop(loop));
    return keys;
}

/// The first place under `key` and below `bound` that passes the test, or `bound`.
template <class Test>
std::size_t FirstUnder(KeyedPlaces const& places, std::uint64_t key, std::size_t bound, Test const& test) {
    for (auto entry = places.lower_bound({key, 0}); entry != places.end() && entry->first == key; ++entry) {
        if (entry->second >= bound)
            break;
        if (test(entry->second))
            return entry->second;
    }
    return bound;
}

} // namespace

Loop const* LoopSearch::Find(Loop const& loop, std::uint64_t place) {
    auto const& loops = m_searched.InteriorLoops();
    bool const byName = HaveNames(m_searched.Positions(), loop.Positions());
    bool const byKey = byName && loops.size() >= kLeastKeyedCount;
    auto const isPartner = [&loop](Loop const& candidate) { return loop.IsCompatible(candidate); };
    auto const* partner = FindPartner(loops, place, byName && !byKey, isPartner);
    if (partner || !byKey)
        return partner;

    if (m_places.empty())
        for (std::size_t candidate = 0; candidate < loops.size(); ++candidate)
            m_places.emplace(KeyOf(loops[candidate]), candidate);
    auto const isPartnerAt = [&](std::size_t candidate) { return isPartner(loops[candidate]); };
    auto best = FirstUnder(m_places, kAnyKey, loops.size(), isPartnerAt);
    if (CanLineUp(loop))
        best = FirstUnder(m_places, KeyOf(loop), best, isPartnerAt);
    return best < loops.size() ? &loops[best] : nullptr;
}

CrossSection const* SectionSearch::Find(CrossSection const& section, std::uint64_t place) {
    auto const& items = m_searched.Items();
    bool const byName = HaveNames(m_searched.Positions(), section.Positions());
    bool const byKey = byName && items.size() >= kLeastKeyedCount;
    auto const* partner = FindPartner(items, place, byName && !byKey,
                                      [&](CrossSection const& candidate) { return IsPartner(section, candidate); });
    if (partner || !byKey)
        return partner;
    return PrepareGroups() ? FindByKey(section) : Walk(section);
}

/// The first partner in list order, whatever the keys say.
CrossSection const* SectionSearch::Walk(CrossSection const& section) {
    auto const& items = m_searched.Items();
    return FindPartner(items, items.size(), true,
                       [&](CrossSection const& candidate) { return IsPartner(section, candidate); });
}

bool SectionSearch::IsPartner(CrossSection const& section, CrossSection const& candidate) {
    m_interiorPartners.clear();
    return AreCompatible(section, candidate, m_convex, &m_interiorPartners);
}

/// False when a section is over another pool than its set's: it may be compared without a look at the counts.
bool SectionSearch::PrepareGroups() {
    auto const& items = m_searched.Items();
    if (m_groups.empty())
        for (std::size_t place = 0; place < items.size(); ++place) {
            if (&items[place].Positions() != &m_searched.Positions()) {
                m_groups.clear();
                return false;
            }
            auto const count = items[place].GetNamedPositionCount();
            auto& group = m_groups[count];
            group.m_count = count;
            group.m_places.push_back(place);
        }
    return true;
}

CrossSection const* SectionSearch::FindByKey(CrossSection const& section) {
    auto const count = section.GetNamedPositionCount();
    auto const group = m_groups.find(count);
    if (group == m_groups.end())
        return nullptr;
    auto const key = MakeSectionKey(section, m_convex, count);
    if (!key.m_isNamed)
        return Walk(section);
    auto const keys = SearchKeys(key);
    auto const* partner = FindFiled(section, keys);
    return partner ? partner : FileUntilFound(section, keys, group->second);
}

CrossSection const* SectionSearch::FindFiled(CrossSection const& section, std::vector<std::uint64_t> const& keys) {
    auto const& items = m_searched.Items();
    std::vector<Loop const*> interiorPartners;
    auto best = items.size();
    for (auto const key : keys) {
        auto const place = FirstUnder(m_places, key, best,
                                      [&](std::size_t candidate) { return IsPartner(section, items[candidate]); });
        if (place < best)
            interiorPartners.swap(m_interiorPartners);
        best = place;
    }
    m_interiorPartners.swap(interiorPartners);
    return best < items.size() ? &items[best] : nullptr;
}

/// Goes on through the group where it was left, and so builds convex loops in list order and no further than to the
/// partner.
CrossSection const* SectionSearch::FileUntilFound(CrossSection const& section,
                                                  std::vector<std::uint64_t> const& keys, Group& group) {
    while (group.m_filed < group.m_places.size()) {
        auto const place = group.m_places[group.m_filed];
        auto const& candidate = m_searched.Items()[place];
        auto const key = FilingKey(candidate, group);
        if (key)
            m_places.emplace(*key, place);
        ++group.m_filed;
        if (key && std::find(keys.begin(), keys.end(), *key) != keys.end() && IsPartner(section, candidate))
            return &candidate;
    }
    return nullptr;
}

/// The key under which a section is looked for, or nothing when it need not be found.
///
/// The interior loops of a partner must all have partners in the section that is given, and the numbers are equal.
/// So a partner without repeats has the same keys. One with repeats may have fewer; it stands under the one of its
/// loops that fewest others have.
std::optional<std::uint64_t> SectionSearch::FilingKey(CrossSection const& section, Group& group) const {
    auto const key = MakeSectionKey(section, m_convex, group.m_count);
    if (!key.m_isNamed)
        return kAnyKey;
    auto const& loops = section.InteriorLoops();
    if (!m_convex && !std::all_of(loops.begin(), loops.end(), CanLineUp))
        return std::nullopt;
    return key.m_hasRepeats ? key.WithLoop(RarestLoop(key.m_interior, group)) : key.Whole();
}

/// The key of these that belongs to interior loops of the fewest sections of the group.
std::uint64_t SectionSearch::RarestLoop(std::vector<std::uint64_t> const& loops, Group& group) const {
    auto& counts = group.m_loopCounts;
    if (counts.empty())
        for (auto const place : group.m_places)
            // Where convex loops are compared no keys are in common, and none is asked about here.
            for (auto const loop : MakeSectionKey(m_searched.Items()[place], false, group.m_count).m_interior)
                ++counts[loop];
    return *std::min_element(loops.begin(), loops.end(), [&counts](std::uint64_t one, std::uint64_t another) {
        return counts.at(one) < counts.at(another);
    });
}

std::optional<SectionPairs> PairSections(CrossSections const& first, CrossSections const& second, bool convex) {
    auto const& sections = first.Items();
    if (sections.size() != second.Items().size())
        return std::nullopt;
    SectionPairs pairs;
    pairs.m_sections.reserve(sections.size());
    SectionSearch search(second, convex);
    for (std::size_t place = 0; place < sections.size(); ++place) {
        auto const* partner = search.Find(sections[place], place);
        if (!partner)
            return std::nullopt;
        pairs.m_sections.push_back(partner);
        auto const& loops = search.InteriorPartners();
        pairs.m_interiorLoops.insert(pairs.m_interiorLoops.end(), loops.begin(), loops.end());
    }
    return pairs;
}

} // namespace qel::Sectrix
