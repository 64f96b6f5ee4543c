#pragma once

#include "sectrix_tools/checks/geometry/boundary.h"
#include "sectrix_tools/checks/geometry/finding_list.h"

/// \file
/// Sizes at which tolerances decide instead of the shape.

namespace qel::SectrixTools::Geometry {

/// Adds a finding for each loop with corners or edges below the tolerances of cutting, with all or the first of
/// them in its message, and one where the section is so large, or so far from the origin, that rounding outweighs
/// them.
void CheckTolerances(Boundary const& boundary, FindingList& findings);

/// What rounding of the coordinates may do to an area within a box.
double RoundingOfAreas(Box const& box);

} // namespace qel::SectrixTools::Geometry
