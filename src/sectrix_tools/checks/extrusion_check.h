#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix_tools/checks/finding.h"

#include <string_view>

/// \file
/// What is wrong in the text of an extrusion document or an end plane.

namespace qel::SectrixTools {

/// What reading drops or alters in the text of an extrusion document or of an end plane, and what it keeps that is
/// hardly meant, in the order of the document. Empty for a document that is read as it stands.
///
/// A document is taken for an end plane where it has none of the keys of an extrusion and one of an end plane, or
/// one that is nearest to one of those. It is held against what a fresh `Extrusion` or `EndPlane` reads. Rules,
/// places and cost are those of `CheckDocument`; nothing here has a place in a set.
///
/// \param text  a whole document.
SECTRIX_TOOLS_EXPORT Findings CheckExtrusion(std::string_view text);

} // namespace qel::SectrixTools
