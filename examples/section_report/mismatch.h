#pragma once

/// \file
/// Why two sets cannot be blended, worked out from what they show of themselves.

#include "common/table.h"
#include "sectrix/sections/cross_sections.h"

#include <string>

namespace example {

/// What differs, with the value of each set: the numbers of sections; and for every section of the first without a
/// partner, against the one at its place in the second, the counts and the names that one has and the other lacks.
/// Empty for compatible sets.
Table Mismatches(qel::Sectrix::CrossSections const& first, std::string const& firstName,
                 qel::Sectrix::CrossSections const& second, std::string const& secondName);

} // namespace example
