#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/sections/cross_sections.h"
#include "sectrix_tools/checks/finding.h"

/// \file
/// Why two sets cannot be blended.

namespace qel::SectrixTools {

/// Why `first` cannot be blended into `second`, section by section and hole by hole; and what is hardly meant where
/// it can.
///
/// There is an error exactly when `first.IsCompatible(second, false)` is false. A section without a partner is
/// compared with the one of the same assembly part, else with the one at the same place: numbers of sections,
/// holes, vertices and names that differ, names missing on either side, names that repeat, another order or
/// direction, and, where a pool has no names, other indices or flags. Warnings are a partner that several sections
/// or holes share, loops without a named vertex among names, one set with names and one without, and parameters
/// that only one set has.
///
/// Places, `m_section`, `m_loop` and `m_vertex`, are those in `first`; what only `second` has is told by its name.
///
/// The sets stay as they are and may be read by other threads meanwhile. Where most sections and holes stand in the
/// same places in both sets this costs time in proportion to n log n, with n vertices; where many do not, the
/// search for partners ends after a time with the code "search-stopped".
SECTRIX_TOOLS_EXPORT Findings CheckBlend(Sectrix::CrossSections const& first, Sectrix::CrossSections const& second);

} // namespace qel::SectrixTools
