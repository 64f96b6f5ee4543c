#pragma once

#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/checks/finding.h"
#include "sectrix_tools/solids/sweeping/station_alignment.h"

#include <vector>

/// \file
/// The rings of a section in the order in which a sweep joins them to those of other sections.

namespace qel::SectrixTools::Solids {

/// A closed run of pool indices.
using Ring = std::vector<int>;

/// The exterior loop of a section and then its holes, by pool indices. A position that is used twice is added to
/// the findings.
std::vector<Ring> PlainRings(Sectrix::CrossSection const& section, Findings& findings);

/// A ring that begins at the vertex that answers to the first one at the first station.
struct StationRing {
    /// Vertices, and the feet that lie between them.
    Ring m_indices;
    /// The place of each vertex among the indices, and behind them the number of indices.
    std::vector<std::size_t> m_vertices;
};

/// The rings of a section, in the order of the loops in `aligned` and each begun where that says.
///
/// \param rings  of the section in its own order, with feet or without.
std::vector<StationRing> OrderRings(Sectrix::CrossSection const& section, std::vector<Ring> const& rings,
                                    std::vector<AlignedLoop> const& aligned);

} // namespace qel::SectrixTools::Solids
