#pragma once

#include "sectrix/sections/cross_section.h"
#include "sectrix/sections/cross_sections.h"

#include <algorithm>
#include <cstdint>
#include <map>
#include <optional>
#include <set>
#include <string>
#include <utility>
#include <vector>

/// \file
/// Internal: the partners of many loops or sections, found through keys made of their names.
///
/// The answers are those of `GetCompatibleInteriorLoop` and `GetCompatibleSection`, asked for one loop or section
/// after the other. A key only says where to look: what it leads to is tested before it counts.

namespace qel::Sectrix {

/// True when loops over these pools are aligned by names.
inline bool HaveNames(CSPositions const& first, CSPositions const& second) {
    return first.NamedCount() >= 1 && second.NamedCount() >= 1;
}

/// The name of the vertex at `place`, which must be in the loop; null when the vertex is not a named one.
inline std::string const* FindName(Loop const& loop, std::size_t place) {
    bool found = false;
    auto const index = static_cast<std::uint64_t>(loop.Vertices()[place].Index());
    auto const& name = loop.Positions().GetPosition(index, found).Name();
    return found && !name.empty() ? &name : nullptr;
}

/// The item at `place` when it passes the test; else, with `byName` true, the first that does; else null.
template <class Item, class Test>
Item const* FindPartner(std::vector<Item> const& items, std::uint64_t place, bool byName, Test const& test) {
    if (place < items.size() && test(items[place]))
        return &items[place];
    if (!byName)
        return nullptr;
    auto const partner = std::find_if(items.begin(), items.end(), test);
    return partner != items.end() ? &*partner : nullptr;
}

/// Where one loop or section stands under each key. Pairs in order give the places under a key from the first on.
using KeyedPlaces = std::set<std::pair<std::uint64_t, std::size_t>>;

/// The partners of loops among the interior loops of one section.
class LoopSearch {
public:
    explicit LoopSearch(CrossSection const& searched) : m_searched(searched) {}

    /// The partner of `loop`, `place` tried first, or null.
    Loop const* Find(Loop const& loop, std::uint64_t place);

private:
    CrossSection const& m_searched;
    /// Filled by the first search that the place to try first does not answer, in a section of many loops.
    KeyedPlaces m_places;
};

/// The partners of sections among those of one set.
class SectionSearch {
public:
    SectionSearch(CrossSections const& searched, bool convex) : m_searched(searched), m_convex(convex) {}

    /// The partner of `section`, `place` tried first, or null. Convex loops are built as a walk through the list
    /// would have built them: in list order, of the sections that it compares, up to the partner.
    CrossSection const* Find(CrossSection const& section, std::uint64_t place);

    /// For each interior loop of the partner found last, its partner in the section that was given. Empty where
    /// convex loops are compared.
    std::vector<Loop const*> const& InteriorPartners() const { return m_interiorPartners; }

private:
    /// Sections with equally many named positions. No other is compared beyond the counts.
    struct Group {
        /// How many they have.
        std::uint64_t m_count = 0;
        /// Ascending.
        std::vector<std::size_t> m_places;
        /// How many of them, from the first on, stand under their keys.
        std::size_t m_filed = 0;
        /// In how many of them an interior loop has this key. Empty until one is filed whose loops have keys in
        /// common.
        std::map<std::uint64_t, std::size_t> m_loopCounts;
    };

    bool IsPartner(CrossSection const& section, CrossSection const& candidate);
    CrossSection const* Walk(CrossSection const& section);
    bool PrepareGroups();
    CrossSection const* FindByKey(CrossSection const& section);
    CrossSection const* FindFiled(CrossSection const& section, std::vector<std::uint64_t> const& keys);
    std::optional<std::uint64_t> FilingKey(CrossSection const& section, Group& group) const;
    std::uint64_t RarestLoop(std::vector<std::uint64_t> const& loops, Group& group) const;
    CrossSection const* FileUntilFound(CrossSection const& section, std::vector<std::uint64_t> const& keys,
                                       Group& group);

    CrossSections const& m_searched;
    bool const m_convex;
    /// By the number of named positions. Empty until a search is not answered by the place to try first.
    std::map<std::uint64_t, Group> m_groups;
    KeyedPlaces m_places;
    std::vector<Loop const*> m_interiorPartners;
};

/// `CrossSection::IsCompatible`.
///
/// \param partners  when not null, receives for each interior loop of `second` its partner in `first`; of no use when the
/// answer is false or convex loops are compared.
bool AreCompatible(CrossSection const& first, CrossSection const& second, bool convex,
                   std::vector<Loop const*>* partners);

/// The sections of a set with their partners in another.
struct SectionPairs {
    /// For each section of the first set its partner in the second.
    std::vector<CrossSection const*> m_sections;
    /// For each interior loop of these partners, one partner after the other, its own partner in the section of the
    /// first set. Empty where convex loops were compared.
    std::vector<Loop const*> m_interiorLoops;
};

/// The partner of every section of `first` in `second`; nothing when the sets are not compatible.
std::optional<SectionPairs> PairSections(CrossSections const& first, CrossSections const& second, bool convex);

} // namespace qel::Sectrix
