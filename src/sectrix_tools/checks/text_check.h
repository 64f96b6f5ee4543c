#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix_tools/checks/finding.h"

#include <string_view>

/// \file
/// A section document from its text to its geometry.

namespace qel::SectrixTools {

/// All that is wrong, or hardly meant, in a section document: what `CheckDocument` says of the text, in the order
/// of the text, then what `CheckGeometry` says of the set that is read from it.
///
/// A finding on geometry has the pointer, line and column of its vertex in the text; without a vertex those of the
/// list of its loop's vertices, without a loop those of its section. Sections, loops and vertices are counted as
/// reading keeps them: interior loops run the other way round in the set, and what is dropped has no geometry. A
/// warning is left out where the document is found fault with at the same element, and so is that positions are too
/// few for a loop.
///
/// \param text   a whole document.
///
/// \param scale  the factor on the coordinates, such as 0.001 from millimetres to metres, as for `CrossSections`.
SECTRIX_TOOLS_EXPORT Findings CheckText(std::string_view text, double scale);

} // namespace qel::SectrixTools
