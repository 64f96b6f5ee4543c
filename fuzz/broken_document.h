#pragma once

#include <cstdint>
#include <string>

/// \file
/// Random documents with faults.

namespace fuzz {

/// A section document, an extrusion or an end plane, most of it good, with faults of every kind strewn in: other
/// kinds, misspelt and repeated keys, indices out of range, lists too short or too long; at times a text that is no
/// JSON. The same for the same seed.
std::string BrokenDocument(std::uint64_t seed);

} // namespace fuzz
