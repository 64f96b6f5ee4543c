#include "sectrix/sections/blending/set_pairing.h"
#include "sectrix/sections/blending/loop_alignment.h"

#include <cassert>
#include <iterator>
#include <map>
#include <numeric>
#include <unordered_map>
#include <utility>

namespace qel::Sectrix {

namespace {

/// What a section must have in common with its partner.
///
/// Every hole of a partner has its own partner in the section, and there are equally many. So a partner has the
/// holes of the section, apart from how often each repeats, or, where its own holes repeat, fewer different ones.
struct SectionKey {
    /// Of the numbers of named positions and of loops, and of the exterior loop where it is compared.
    std::uint64_t m_outline = 0;
    /// The keys of the interior loops, each once, ascending; or those of the convex loops, in their order.
    std::vector<std::uint64_t> m_loops;

    /// Makes the key, building the convex loops when they are what is compared. False when some loop is not
    /// compared by names.
    bool Set(CrossSection const& section, bool convex, std::uint64_t namedCount) {
        auto const& loops = convex ? section.ConvexLoops() : section.InteriorLoops();
        m_outline = Mix(namedCount, loops.size());
        m_loops.clear();
        if (!HaveKeys(loops) || section.ExteriorLoop().Positions().NamedCount() < 1)
            return false;
        std::transform(loops.begin(), loops.end(), std::back_inserter(m_loops), KeyOf);
        if (convex)
            return true;
        m_outline = Mix(m_outline, KeyOf(section.ExteriorLoop()));
        std::sort(m_loops.begin(), m_loops.end());
        m_loops.erase(std::unique(m_loops.begin(), m_loops.end()), m_loops.end());
        return true;
    }

    /// One number for it all, the same for equal keys.
    std::uint64_t Hash() const { return std::accumulate(m_loops.begin(), m_loops.end(), m_outline, Mix); }

    /// True when the holes of `other` are some of these.
    bool Covers(SectionKey const& other) const {
        return other.m_outline == m_outline &&
               std::includes(m_loops.begin(), m_loops.end(), other.m_loops.begin(), other.m_loops.end());
    }
};

/// Finds the partners of sections among those of one set: what `GetCompatibleSection` finds, asked for one after
/// the other. Convex loops are built in the order of its walk, and no others: of the sections that have equally
/// many names, up to the partner.
class SectionSearch {
public:
    SectionSearch(CrossSections const& searched, bool convex)
        : m_pool(searched.Positions()), m_items(searched.Items()), m_convex(convex) {}

    /// Whether `section` has a partner, `place` tried first.
    bool Find(CrossSection const& section, std::size_t place) {
        if (place < m_items.size() && IsPartner(section, m_items[place]))
            return true;
        if (!HaveNames(m_pool, section.Positions()))
            return false;
        CountNames();
        return m_isKeyed ? FindByKey(section) : Walk(section);
    }

    /// The section and the partner that were found last and, unless convex loops are compared, how their loops
    /// pair.
    SectionPair const& Pair() const { return m_pair; }

private:
    bool IsPartner(CrossSection const& section, CrossSection const& candidate) {
        if (!m_convex)
            return AreCompatible(section, candidate, m_pair);
        m_pair.m_first = &section;
        m_pair.m_second = &candidate;
        return section.IsCompatible(candidate, true);
    }

    /// Whatever the keys say.
    bool Walk(CrossSection const& section) {
        auto const isPartner = [&](CrossSection const& candidate) { return IsPartner(section, candidate); };
        return std::any_of(m_items.begin(), m_items.end(), isPartner);
    }

    void CountNames() {
        if (!m_namedCounts.empty())
            return;
        for (auto const& section : m_items) {
            // Without names in its own pool, a section is compared whatever these numbers are.
            m_isKeyed = m_isKeyed && section.Positions().NamedCount() >= 1;
            m_namedCounts.push_back(section.GetNamedPositionCount());
            m_filed.emplace(m_namedCounts.back(), 0);
        }
    }

    bool FindByKey(CrossSection const& section) {
        auto const namedCount = section.GetNamedPositionCount();
        auto const filed = m_filed.find(namedCount);
        if (filed == m_filed.end())
            return false;
        SectionKey key;
        if (!key.Set(section, m_convex, namedCount) || !FileUpTo(key.Hash(), namedCount, filed->second))
            return Walk(section);
        auto const same = m_firstOf.find(key.Hash());
        auto best = same != m_firstOf.end() ? same->second : m_items.size();
        auto const end = m_repeating.lower_bound(key.m_loops.size());
        for (auto group = m_repeating.begin(); group != end; ++group)
            for (auto const& [place, other] : group->second)
                if (place < best && key.Covers(other) && IsPartner(section, m_items[place]))
                    best = place;
        // The first of the same key is no partner only where other names have this key by chance, or where the
        // section does not even line up with itself, which ends the comparison of the sets.
        return best < m_items.size() && (IsPartner(section, m_items[best]) || Walk(section));
    }

    /// Files the sections with so many names from `next` on, up to one with this key. False once there is one
    /// without a key.
    bool FileUpTo(std::uint64_t wanted, std::uint64_t namedCount, std::size_t& next) {
        SectionKey key;
        for (; m_isKeyed && next < m_items.size() && m_firstOf.count(wanted) == 0; ++next) {
            if (m_namedCounts[next] != namedCount)
                continue;
            m_isKeyed = key.Set(m_items[next], m_convex, namedCount);
            auto const& holes = m_items[next].InteriorLoops();
            // A hole that bears a name twice or has an index that is not in its pool has no partner anywhere.
            bool const isHopeless = !m_convex && !std::all_of(holes.begin(), holes.end(), [](Loop const& hole) {
                return hole.IsCompatible(hole);
            });
            if (!m_isKeyed || isHopeless)
                continue;
            m_firstOf.emplace(key.Hash(), next);
            if (!m_convex && key.m_loops.size() < holes.size())
                m_repeating[key.m_loops.size()].emplace_back(next, key);
        }
        return m_isKeyed;
    }

    CSPositions const& m_pool;
    std::vector<CrossSection> const& m_items;
    bool const m_convex;
    SectionPair m_pair;
    /// How many named positions each section has: only sections with equally many are compared any further. Empty
    /// until a section does not fit the place to try first.
    std::vector<std::uint64_t> m_namedCounts;
    /// For each of these numbers, the place up to which the sections that have it are filed.
    std::map<std::uint64_t, std::size_t> m_filed;
    /// The first place of each key.
    std::unordered_map<std::uint64_t, std::size_t> m_firstOf;
    /// Places and keys of the sections whose holes repeat, by how many different holes they have.
    std::map<std::size_t, std::vector<std::pair<std::size_t, SectionKey>>> m_repeating;
    /// False once there was a section that is not compared by names alone.
    bool m_isKeyed = true;
};

/// Hands over the pair of each section of `first` and its partner, in order; false once there is none.
template <class Take>
bool FindPartners(CrossSections const& first, CrossSections const& second, bool convex, Take const& take) {
    auto const& sections = first.Items();
    SectionSearch search(second, convex);
    bool isGood = sections.size() == second.Items().size();
    for (std::size_t place = 0; isGood && place < sections.size(); ++place) {
        isGood = search.Find(sections[place], place);
        if (isGood)
            take(search.Pair());
    }
    return isGood;
}

/// How many positions the builds of convex loops have added.
std::size_t CountAdded(CrossSections const& set) {
    std::size_t count = 0;
    for (auto const& section : set.Items())
        count += section.AddedVertices().size();
    return count;
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
    pairs.reserve(first.Items().size());
    auto const take = [&pairs](SectionPair const& pair) { pairs.push_back(pair); };
    auto const addedBefore = CountAdded(first) + CountAdded(second);
    if (!FindPartners(first, second, convex, take))
        return std::nullopt;
    if (CountAdded(first) + CountAdded(second) != addedBefore) {
        pairs.clear();
        // What has become valid is a position without a name, which keeps no loop from lining up.
        [[maybe_unused]] bool const isStillGood = FindPartners(first, second, convex, take);
        assert(isStillGood);
    }
    if (convex)
        for (auto& pair : pairs)
            pair = PairLoops(*pair.m_first, *pair.m_second);
    return pairs;
}

} // namespace qel::Sectrix
