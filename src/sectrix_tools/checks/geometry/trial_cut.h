#pragma once

#include "sectrix/sections/cross_sections.h"
#include "sectrix_tools/checks/geometry/point.h"

#include <cstddef>
#include <optional>
#include <vector>

/// \file
/// Cuts sections where nobody sees it.

namespace qel::SectrixTools::Geometry {

/// A corner of a convex loop that is not convex.
struct Notch {
    /// The place of the loop in the list of convex loops.
    std::size_t m_loop = 0;
    Point m_point;
};

/// What cutting made of a section.
struct CutResult {
    /// The first notch of each loop that has one.
    std::vector<Notch> m_notches;
    /// The areas of all loops, each counted as positive, in one sum.
    double m_area = 0.0;
};

/// Cuts sections over one pool in a copy of that, so that neither they nor their pool are written to.
class TrialCut {
public:
    explicit TrialCut(Sectrix::CSPositions const& pool);

    CutResult Cut(Sectrix::CrossSection const& section);

private:
    /// One section over a copy of the pool.
    Sectrix::CrossSections m_set;
};

} // namespace qel::SectrixTools::Geometry
