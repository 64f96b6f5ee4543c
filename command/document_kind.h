#pragma once

#include <string>

/// \file
/// What kind of document a text is.

namespace qel::SectrixCommand {

/// True for a document of 3D polylines or of an end plane, which has keys of its own and not that of section
/// documents. The text is searched, not parsed, so that a document that is broken is recognised as well.
bool IsExtrusion(std::string const& text);

} // namespace qel::SectrixCommand
