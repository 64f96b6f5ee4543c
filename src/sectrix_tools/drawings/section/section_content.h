#pragma once

#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/drawings/svg/label_placement.h"
#include "sectrix_tools/drawings/svg/svg.h"

#include <map>
#include <string>
#include <vector>

/// \file
/// What the pictures of a section show of it.

namespace qel::SectrixTools::Pictures {

/// The parts of a section that have a place in a picture, in model coordinates.
struct SectionContent {
    /// \param withConvexLoops  takes the loops and edges from the convex loops, and builds these; otherwise from the
    ///                         exterior and interior loops, which then are one shape.
    SectionContent(Sectrix::CrossSection const& section, bool withConvexLoops);

    /// The corners of each convex loop; else those of the outline and of each hole, as one shape.
    std::vector<std::vector<Point>> m_loops;
    /// A tint for each convex loop; empty where the loops are one shape.
    std::vector<std::size_t> m_tints;
    /// For each convex loop, whether it is to be hatched.
    std::vector<bool> m_faults;
    /// The edges of outline and holes.
    std::vector<Segment> m_outline;
    /// The edges that bridges and cuts have made, once each.
    std::vector<Segment> m_cuts;
    /// Where the feet of bridges are that are new positions.
    std::vector<Point> m_feet;
    /// Names and where they belong, by pool index.
    std::map<int, Label> m_named;
};

/// The style sheet of what `DrawLoops` draws.
std::string LoopStyle();
/// The patterns that it fills with, to be put in front.
std::string LoopDefinitions();
/// Draws loops and edges.
void DrawLoops(Svg& svg, SectionContent const& content, View const& view);

/// Segments of a model as they lie in a picture.
std::vector<Segment> ToPicture(std::vector<Segment> const& segments, View const& view);

/// The points of the loop's vertices, those left out whose index is not in the pool.
std::vector<Point> CornersOf(Sectrix::Loop const& loop);

} // namespace qel::SectrixTools::Pictures
