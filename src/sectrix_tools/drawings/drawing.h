#pragma once

#include "sectrix_tools/checks/finding.h"

#include <string>

/// \file
/// What every drawing call gives back.

namespace qel::SectrixTools {

/// A picture, or why there is none.
///
/// Nothing raises an exception but for memory that runs out, and nothing that a host hands over makes a call hang.
struct Drawing {
    /// The text of an SVG document that refers to nothing outside of it; empty where nothing could be drawn.
    std::string m_svg;
    /// Why nothing could be drawn, or what was left out of the picture.
    Findings m_findings;
};

} // namespace qel::SectrixTools
