#pragma once

#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/checks/finding.h"

/// \file
/// Whether a section can be a station.

namespace qel::SectrixTools::Solids {

/// The errors that `CheckGeometry` finds in a section.
///
/// \param isCut  false passes over what is wrong with the convex loops only.
Findings SoundnessErrors(Sectrix::CrossSection const& section, bool isCut);

} // namespace qel::SectrixTools::Solids
