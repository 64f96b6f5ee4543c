#pragma once

#include "sectrix/interfaces/dom.h"

#include <string>

/// \file
/// A host's own reader of JSON text.

namespace qel {

class DomReaderJson {
public:
    static bool FromString(Dom& dom, char const* text, std::string* error);

private:
    struct Builder;
};

} // namespace qel
