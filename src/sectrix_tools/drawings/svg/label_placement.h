#pragma once

/// \file
/// Where to write the names of points in a drawing, so that they cover neither each other nor the lines.

#include "sectrix_tools/drawings/svg/svg.h"

#include <string>
#include <utility>
#include <vector>

namespace qel::SectrixTools::Pictures {

using Segment = std::pair<Point, Point>;

/// A rectangle of a picture, by two corners.
struct Box {
    Point m_low;
    Point m_high;
};

/// A name to be written, and where.
struct Label {
    std::string m_text;
    Point m_point;
    /// The middle of the text's baseline.
    Point m_baseline{};
    /// The end of the leader from the point to the text.
    Point m_leaderEnd{};
    /// False when there was no room for the text.
    bool m_placed = false;
    /// True when the text stands so far off its point that it takes a leader to tell which one is meant.
    bool m_far = false;
};

/// Places the labels one after another, each where it is least in the way.
/// \param labels    text and point given; the rest is filled in.
/// \param fontSize  in pixels.
/// \param page      no text leaves it.
/// \param shape     what the points belong to: names would rather stand away from its middle.
/// \param taken     rectangles that no text covers.
/// \param lines     lines that texts had better not cover.
void PlaceLabels(std::vector<Label>& labels, double fontSize, Box page, Box shape, std::vector<Box> taken,
                 std::vector<Segment> const& lines);

} // namespace qel::SectrixTools::Pictures
