#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/interfaces/dom.h"

#include <string>

/// \file
/// From JSON text to a document tree.

namespace qel {

/// Reads JSON text.
class SECTRIX_JSON_EXPORT DomReaderJson {
public:
    /// True when the text was read; `dom` then holds its tree. Otherwise `dom` is a fresh node, with nothing
    /// half-read.
    ///
    /// Takes what RFC 8259 allows, in UTF-8 with or without a byte order mark. Refused beside malformed text are
    /// invalid UTF-8, an integer beyond 64 bits, a number beyond the range of double, and nesting deeper than 1024.
    /// An integer is kept as one, save that from 2^63 up it becomes the nearest double; every other number is the
    /// nearest double.
    ///
    /// \param dom    replaced in any case.
    /// \param text   ends at its first zero byte; not null.
    /// \param error  where not null: receives why the text was refused, or becomes empty.
    /// \throws std::bad_alloc when memory runs out; `dom` then keeps what it held.
    static bool FromString(Dom& dom, char const* text, std::string* error);

private:
    struct Builder;
};

} // namespace qel
