#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix_tools/checks/finding.h"

#include <string_view>

/// \file
/// What is wrong in the text of a section document.

namespace qel::SectrixTools {

/// What reading drops or alters in the text of a section document, and what it keeps that is hardly meant, in the
/// order of the document. Empty for a document that is read as it stands.
///
/// `CrossSections::From` passes over what it cannot use and says nothing; the errors here are what it passes over.
/// `codes.h` tells, code by code, what reading does. What a dropped element holds is not looked at, save that all
/// of a section is. Neither finding nor error are: rounding to the nearest double, a loop that repeats its first
/// index at its end, a byte order mark, and the members of `Params`, whose names are the host's. Geometry is not
/// looked at.
///
/// Each finding has its JSON Pointer, line and column; of several members with one key each has the same pointer.
/// The place of section, loop and vertex is that in the set which a fresh set reads, and is given where reading
/// keeps them.
///
/// Text is read up to its first zero byte, as by the reader of documents. Throws nothing but `std::bad_alloc`.
/// Takes time that is linear in the length of the text and the number of findings, times the logarithm of the
/// latter.
///
/// \param text  a whole document.
SECTRIX_TOOLS_EXPORT Findings CheckDocument(std::string_view text);

} // namespace qel::SectrixTools
