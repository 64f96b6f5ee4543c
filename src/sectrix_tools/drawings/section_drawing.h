#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/sections/cross_section.h"
#include "sectrix_tools/drawings/drawing.h"

#include <string>

/// \file
/// The drawing of a section, and of the convex loops that cover it.

namespace qel::SectrixTools {

/// What the drawing of a section shows.
struct SectionDrawingOptions {
    /// Stands above the picture, in UTF-8; no line where it is empty.
    std::string m_title = {};
    /// A smaller line below the title; none where it is empty.
    std::string m_subtitle = {};
    /// The unit of the coordinates, written behind lengths: the document does not tell it.
    std::string m_unit = "units";
    /// The greatest width of the picture in pixels, from 100 to 10,000; a section eight times as wide as high may
    /// take 1.7 times as much. What lies outside is brought to the nearest bound.
    double m_width = 960.0;
    /// The convex loops, each in a tint other than its neighbours', those hatched that are not convex, and the
    /// edges between them. Without them the section is one shape, and no convex loops are built.
    bool m_showsConvexLoops = true;
    /// A mark at each foot of a bridge that is a new position; only beside the convex loops.
    bool m_showsFeet = true;
    /// A mark and the name at each named position of the section's loops. Where more than a hundred have names,
    /// only the marks.
    bool m_showsNames = true;
    /// The overall width and height.
    bool m_showsDimensions = true;
    /// What the lines, tints and marks mean, at the foot of the picture.
    bool m_showsLegend = true;
};

/// Draws a section as an engineer would look at it, x to the right and y upward.
///
/// Solid lines are the outline and its holes; dashed ones the bridges and cuts, as the flags of the vertices say. A
/// scale bar tells the size. Builds the convex loops where they are shown, with all that this writes. A finding
/// "nothing-to-draw" and no picture where the section has no finite extent.
///
/// Costs time in proportion to the vertices of the loops, and the number of names shown times that.
SECTRIX_TOOLS_EXPORT Drawing DrawSection(Sectrix::CrossSection const& section,
                                         SectionDrawingOptions const& options = {});

} // namespace qel::SectrixTools
