#pragma once

#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/checks/finding.h"
#include "sectrix_tools/checks/geometry/trial_cut.h"

/// \file
/// What is wrong with the geometry of one section.

namespace qel::SectrixTools::Geometry {

/// The findings of a section.
///
/// \param place  the place of the section in its set.
///
/// \param trial  cuts over a copy of the section's pool.
Findings CheckSection(Sectrix::CrossSection const& section, int place, TrialCut& trial);

} // namespace qel::SectrixTools::Geometry
