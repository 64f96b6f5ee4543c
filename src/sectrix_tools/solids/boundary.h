#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/checks/finding.h"

#include <array>
#include <vector>

/// \file
/// The boundary of a section as its convex loops have it, and the triangles within.

namespace qel::SectrixTools {

/// Outline and holes of a section and the triangles that fill it, over the positions of its pool.
///
/// Every edge of a ring is an edge of one triangle, and every other edge of a triangle is one of exactly one other,
/// the other way round. So what is built on the rings meets what is built on the triangles in every point.
struct SectionBoundary {
    /// The outline first, then the holes in their order, by pool indices. Each ring begins with the first vertex of
    /// its loop and runs as the loop does; a foot of a bridge that lies on one of its edges stands between the
    /// ends.
    std::vector<std::vector<int>> m_rings;
    /// Triangles by pool indices, counter-clockwise, none of them flat. They have no other points than the rings,
    /// and are those of the convex loops, each cut into triangles.
    std::vector<std::array<int, 3>> m_triangles;
    /// Why rings and triangles are empty.
    Findings m_findings;
};

/// The boundary of a section and the triangles within. Builds the convex loops if they are not built yet, with all
/// that this writes.
///
/// There is none, and errors say why, for a section in whose geometry `CheckGeometry` finds an error, and for one
/// that the triangles do not go together with: "position-used-twice" where two vertices have one position,
/// "loops-not-of-the-section" where the convex loops are from before an edit or points coincide, "loop-not-convex"
/// where a loop cannot be cut into triangles.
///
/// Costs n log n of the vertices, beside the check and the building of the loops.
SECTRIX_TOOLS_EXPORT SectionBoundary Boundary(Sectrix::CrossSection const& section);

} // namespace qel::SectrixTools
