#pragma once

#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/checks/finding.h"

#include <vector>

/// \file
/// Which vertices of two sections correspond.

namespace qel::SectrixTools::Solids {

/// The loop of a section that corresponds to a loop of the first one, and the vertex that does to its first vertex.
struct AlignedLoop {
    /// 0 for the exterior loop, 1 onward for the interior ones.
    std::size_t m_loop = 0;
    std::size_t m_vertex = 0;
};

/// For each loop of `first`, the loop of `other`. Where they do not correspond the result is empty and a finding is
/// added.
std::vector<AlignedLoop> AlignStation(Sectrix::CrossSection const& first, Sectrix::CrossSection const& other,
                                      Findings& findings);

/// The exterior loop for 0, else an interior one.
inline Sectrix::Loop const& LoopOf(Sectrix::CrossSection const& section, std::size_t loop) {
    return loop == 0 ? section.ExteriorLoop() : section.InteriorLoops()[loop - 1];
}

} // namespace qel::SectrixTools::Solids
