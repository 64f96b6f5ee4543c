#pragma once

#include "sectrix/sections/loop.h"
#include "sectrix_tools/checks/geometry/finding_list.h"

#include <string>

/// \file
/// Why two loops do not line up.

namespace qel::SectrixTools::Geometry {

/// True when loops over these pools are lined up by names.
inline bool HaveNames(Sectrix::CSPositions const& first, Sectrix::CSPositions const& second) {
    return first.NamedCount() > 0 && second.NamedCount() > 0;
}

/// Adds why two loops do not line up, at least one finding where they do not.
///
/// \param number  that of the first loop in its section, 0 for the outline.
///
/// \param what    the loops, as they are called in a message.
void CompareLoops(Sectrix::Loop const& first, Sectrix::Loop const& second, int number, std::string const& what,
                  FindingList& findings);

} // namespace qel::SectrixTools::Geometry
