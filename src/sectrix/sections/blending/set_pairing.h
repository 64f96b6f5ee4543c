#pragma once

#include "sectrix/sections/blending/section_pairing.h"
#include "sectrix/sections/cross_sections.h"

#include <optional>
#include <vector>

/// \file
/// Internal: how the sections of two sets pair.

namespace qel::Sectrix {

/// The sections of `first`, in order, each paired with its partner in `second`; nothing when the sets are not
/// compatible.
///
/// Building convex loops can make an index valid that was past the end of its pool when it was compared. A blend
/// goes by the partners that are found after that: where a build has added positions, they are looked for again.
std::optional<std::vector<SectionPair>> PairSections(CrossSections const& first, CrossSections const& second,
                                                     bool convex);

} // namespace qel::Sectrix
