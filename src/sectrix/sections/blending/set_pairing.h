#pragma once

#include "sectrix/sections/blending/name_keys.h"
#include "sectrix/sections/blending/section_pairing.h"
#include "sectrix/sections/cross_sections.h"

#include <cstddef>
#include <cstdint>
#include <map>
#include <optional>
#include <unordered_map>
#include <utility>
#include <vector>

/// \file
/// Internal: how the sections of two sets pair.

namespace qel::Sectrix {

/// The partners of sections among those of one set: those that `GetCompatibleSection` gives, asked for one after
/// the other.
class SectionSearch {
public:
    SectionSearch(CrossSections const& searched, bool convex) : m_searched(searched), m_convex(convex) {}

    /// The partner of `section`, `place` tried first, or null. Convex loops are built as a walk through the list
    /// would build them: in list order, of the sections that it compares, up to the partner.
    CrossSection const* Find(CrossSection const& section, std::uint64_t place);

    /// The two sections found last and, unless convex loops are compared, how their loops pair.
    SectionPair const& Pair() const { return m_pair; }

private:
    bool IsPartner(CrossSection const& section, CrossSection const& candidate);
    CrossSection const* Walk(CrossSection const& section);
    bool CountNames();
    CrossSection const* FindByKey(CrossSection const& section);
    bool FileUntilFound(std::uint64_t wanted, std::uint64_t count, std::size_t& next);

    CrossSections const& m_searched;
    bool const m_convex;
    SectionPair m_pair;
    /// For each searched section how many named positions it has; no two are compared unless these are equal. Empty
    /// until a search is not answered by the place to try first.
    std::vector<std::uint64_t> m_counts;
    /// For each of these numbers, the place up to which the sections that have it are filed.
    std::map<std::uint64_t, std::size_t> m_filed;
    /// The first place of each key among the filed sections.
    std::unordered_map<std::uint64_t, std::size_t> m_firstOf;
    /// Places and keys of the filed sections whose holes repeat, by how many different ones they have.
    std::map<std::size_t, std::vector<std::pair<std::size_t, SectionKey>>> m_repeating;
    /// False once a section was met that is not compared by names alone.
    bool m_isKeyed = true;
};

/// How the sections of two sets pair, in the order of `first`; nothing when the sets are not compatible.
///
/// Where convex loops are compared, a build may make an index valid that was past the end of its pool when it was
/// compared. So the partners are asked for again when a build has added positions, as for the blend they must be.
std::optional<std::vector<SectionPair>> PairSections(CrossSections const& first, CrossSections const& second,
                                                     bool convex);

} // namespace qel::Sectrix
