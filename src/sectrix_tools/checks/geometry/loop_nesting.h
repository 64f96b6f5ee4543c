#pragma once

#include "sectrix_tools/checks/geometry/boundary.h"

#include <cstddef>
#include <set>
#include <utility>
#include <vector>

/// \file
/// Which loops of a section lie in which.

namespace qel::SectrixTools::Geometry {

/// Pairs of loops, the first number the less.
using LoopPairs = std::set<std::pair<int, int>>;

struct Nesting {
    /// The interior loops that lie outside the exterior one.
    std::vector<std::size_t> m_outside;
    /// The interior loops that lie on the exterior one all the way round.
    std::vector<std::size_t> m_on;
    /// Interior loops that lie in another, with that one, by the inner. One that lies on another all the way round
    /// counts as lying in it if it stands behind it.
    std::vector<std::pair<std::size_t, std::size_t>> m_inside;
};

/// How the loops lie to each other, by the number of edges that are crossed on the way out.
///
/// \param crossing  the pairs of loops that cross; they are passed over.
Nesting FindNesting(Boundary const& boundary, LoopPairs const& crossing);

} // namespace qel::SectrixTools::Geometry
