#pragma once

#include "sectrix/sections/cross_section.h"

#include <vector>

/// \file
/// Internal: how the loops of two sections pair.

namespace qel::Sectrix {

/// The partner of a hole of the second section: what `GetCompatibleInteriorLoop` of the first finds for it.
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

/// `CrossSection::IsCompatible` without convex loops.
/// \param pair  becomes that of the two sections; of no use when the answer is false.
bool AreCompatible(CrossSection const& first, CrossSection const& second, SectionPair& pair);

/// The pair of any two sections, compatible or not.
SectionPair PairLoops(CrossSection const& first, CrossSection const& second);

} // namespace qel::Sectrix
