#pragma once

#include "sectrix/sections/cross_section.h"

#include <cstddef>
#include <cstdint>
#include <utility>
#include <vector>

/// \file
/// Internal: how the loops of two sections pair.

namespace qel::Sectrix {

/// The partner of a hole of the second section, and how the two lie one on the other.
struct HolePair {
    /// In the first section; null where there is none.
    Loop const* m_partner = nullptr;
    /// `BlendShift` of the partner against the hole.
    int m_shift = 0;
};

/// Two sections and how their loops pair.
struct SectionPair {
    CrossSection const* m_first = nullptr;
    CrossSection const* m_second = nullptr;
    /// `BlendShift` of the exterior loop of the first against that of the second.
    int m_exteriorShift = 0;
    /// One for each interior loop of the second, in its order.
    std::vector<HolePair> m_holes;
};

/// The partners of holes among the interior loops of one section: those that `GetCompatibleInteriorLoop` gives,
/// asked for one after the other.
class HoleSearch {
public:
    explicit HoleSearch(CrossSection const& searched) : m_searched(searched) {}

    /// The partner of `hole`, `place` tried first.
    HolePair Find(Loop const& hole, std::uint64_t place);

private:
    /// The first of the searched loops whose key is that of `hole`, and so the partner if there is one; null when
    /// no key is the same.
    Loop const* FindByKey(Loop const& hole);

    CrossSection const& m_searched;
    /// The keys of the loops and their places, ascending. Empty until a search is not answered by the place to try
    /// first.
    std::vector<std::pair<std::uint64_t, std::size_t>> m_keyed;
};

/// `CrossSection::IsCompatible` without convex loops.
/// \param pair  becomes that of the two sections; of no use when the answer is false.
bool AreCompatible(CrossSection const& first, CrossSection const& second, SectionPair& pair);

/// The pair of any two sections, compatible or not.
SectionPair PairLoops(CrossSection const& first, CrossSection const& second);

} // namespace qel::Sectrix
