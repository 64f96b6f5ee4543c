#pragma once

#include "sectrix_tools/checks/geometry/boundary.h"

#include <cstddef>
#include <vector>

/// \file
/// Which edges of a section have to be taken away so that no two of those left meet outside their corners.

namespace qel::SectrixTools::Geometry {

/// What a sweep has found.
struct SweepResult {
    /// Edges such that all others meet in nothing but common ends. Each of them meets another edge otherwise.
    std::vector<std::size_t> m_edges;
    /// False when there are more of them than were to be found, and the sweep ended early.
    bool m_isComplete = true;
};

/// Sweeps a line over the edges of `boundary`, whose `order` is that of its corners by point.
///
/// After M. I. Shamos and D. Hoey, "Geometric Intersection Problems", 17th Annual Symposium on Foundations of
/// Computer Science (1976), 208-215: edges that meet are neighbours on the sweeping line before they do. One of the
/// two is then taken away, so that the rest stays in order. With n edges this takes time in proportion to n log n.
///
/// \param most  the sweep ends when more edges than this have been taken away.
SweepResult SweepEdges(Boundary const& boundary, std::vector<std::size_t> const& order, std::size_t most);

} // namespace qel::SectrixTools::Geometry
