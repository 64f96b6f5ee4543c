#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/interfaces/dom.h"

#include <string>

/// \file
/// From a document tree to JSON text.

namespace qel {

/// Writes JSON text.
class SECTRIX_JSON_EXPORT DomWriterJson {
public:
    /// The tree as JSON text, indented by two spaces a level; a container whose children have none of their own
    /// stands on one line, so that a point or a list of indices reads as one.
    ///
    /// Numbers are the shortest text that reads back bit for bit, and a double always reads back as a double. A
    /// fresh node, an infinite number and not-a-number become null. Strings go out as they are, with what JSON
    /// demands escaped, so that text which is not UTF-8 does not read back.
    static std::string ToString(Dom const& dom);
};

} // namespace qel
