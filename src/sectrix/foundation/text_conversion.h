#pragma once

#include "sectrix/foundation/export.h"

#include <string>

/// \file
/// Between wide strings of 16-bit units and narrow strings of bytes.
///
/// Both conversions work by fixed tables, whatever the platform and its locale: each unit stands alone, nothing is
/// validated and nothing is replaced. A surrogate pair is two units of three bytes each, so text beyond U+FFFF is
/// not standard UTF-8, and a document that holds it is refused by `DomReaderJson`; both directions agree on it, and
/// every wide string without a zero comes back as it was. The input ends at its first zero, also within a string
/// object that is longer. Costs one pass and one allocation.

namespace qel::Sectrix {

/// The bytes of `text`; empty when it is empty.
///
/// A unit below 0x80 gives one byte, below 0x800 two, any other three. Where `wchar_t` is wider than 16 bits, an
/// element from 0x10000 to 0x10FFFF gives the six bytes of the two surrogate units that it stands for, and of any
/// other element the lower 16 bits count.
SECTRIX_EXPORT std::string ToUtf8(std::wstring const& text);
/// The same; empty when `text` is null.
SECTRIX_EXPORT std::string ToUtf8(wchar_t const* text);

/// The units of `text`, one an element; empty when it is empty.
///
/// A byte below 0x80 is a unit of its own, one from 0xE0 to 0xEF leads a form of three bytes, and any other,
/// whatever it is, one of two. The bytes behind a lead give their lower six bits; those past the end of the input
/// are 0. A form may give the unit 0, which stays in the result.
SECTRIX_EXPORT std::wstring Utf8ToW(std::string const& text);
/// The same; empty when `text` is null.
SECTRIX_EXPORT std::wstring Utf8ToW(char const* text);

} // namespace qel::Sectrix
