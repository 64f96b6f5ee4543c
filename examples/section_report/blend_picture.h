#pragma once

/// \file
/// Drawings of sets that lie between two others.

#include "sectrix/sections/cross_section.h"

#include <string>
#include <vector>

namespace example {

/// A section at one station on the way.
struct Station {
    qel::Sectrix::CrossSection const* m_section;
    /// What stands below it.
    std::string m_caption;
};

/// The sections side by side in one scale and at one height, each with its convex loops.
std::string DrawSideBySide(std::vector<Station> const& stations, std::string const& title, std::string const& unit);

/// The outlines one behind the other, the first in front, with lines along the span through their corners.
std::string DrawAlongSpan(std::vector<Station> const& stations, std::string const& title, std::string const& unit);

} // namespace example
