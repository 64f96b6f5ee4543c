#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/sections/cross_sections.h"
#include "sectrix_tools/checks/finding.h"

/// \file
/// What is wrong with the geometry of a set of sections.

namespace qel::SectrixTools {

/// All that is wrong, or hardly meant, in the geometry of the sections of a set, section by section, and in each by
/// loop and vertex.
///
/// Errors are what keeps a section from being one, or its convex loops from covering it: vertices without a
/// position or with a coordinate that is not finite, loops of fewer than three vertices or without area, an outline
/// that runs clockwise, a hole that runs counter-clockwise, edges that cross, holes outside the outline or in each
/// other, and convex loops that are not convex or have another area together than the section. The cut is only
/// tried, on a copy, where there is no other error. Warnings are repeated points, edges without length, spikes,
/// boundaries that touch, and sizes at which the tolerances of cutting, or rounding, decide instead of the shape.
///
/// Whether edges meet is decided without rounding, on the coordinates as they are in the pool. Every place is
/// named. Of one kind at most 1000 are listed in a section; a finding with the code "not-listed" says how many more
/// there are. A section whose edges meet in more than some thousand places is not searched to the end, which the
/// code "search-stopped" says.
///
/// The set stays as it is, derived state included, and may be read by other threads meanwhile. With n vertices and
/// k places where edges meet this costs time in proportion to n log n + n k.
SECTRIX_TOOLS_EXPORT Findings CheckGeometry(Sectrix::CrossSections const& set);
/// The same for one section, which counts as that at place 0.
SECTRIX_TOOLS_EXPORT Findings CheckGeometry(Sectrix::CrossSection const& section);

} // namespace qel::SectrixTools
