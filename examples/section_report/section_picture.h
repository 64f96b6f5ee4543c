#pragma once

/// \file
/// The drawing of a section and of the convex loops that cover it.

#include "common/svg.h"
#include "sectrix/sections/cross_section.h"

#include <string>

namespace example {

/// A drawing in SVG.
struct Picture {
    std::string m_document;
    /// True when the drawing is so much wider than high that it wants a row of its own.
    bool m_wide = false;
};

/// Draws the convex loops tinted, those that are not convex hatched; edges of the outline solid and those that
/// bridges and cuts have made dashed, as the flags of the vertices say; positions that have a name, and positions
/// that were added; the overall dimensions and a scale bar. \param unit  the unit of the coordinates.
Picture DrawSection(qel::Sectrix::CrossSection const& section, std::string const& title,
                    std::string const& subtitle, std::string const& unit);

/// Draws the convex loops of a section as `DrawSection` does, without names and numbers, into a document that has
/// `LoopStyle` for its style and `LoopDefinitions` in front.
void DrawConvexLoops(Svg& svg, qel::Sectrix::CrossSection const& section, View const& view);
std::string LoopStyle();
std::string LoopDefinitions();

} // namespace example
