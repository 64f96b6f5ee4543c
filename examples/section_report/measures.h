#pragma once

/// \file
/// What a host can measure on the loops of a section.

#include "common/svg.h"
#include "sectrix/sections/cross_section.h"

#include <cstddef>
#include <vector>

namespace example {

/// The points of a loop's vertices, those left out whose index is not in the pool.
std::vector<Point> Corners(qel::Sectrix::Loop const& loop);

/// The area within a loop, negative when it runs clockwise.
double SignedArea(qel::Sectrix::Loop const& loop);

/// False for a loop that runs clockwise, turns to the right at a corner, or winds around more than once. Straight
/// corners are no fault.
bool IsConvex(qel::Sectrix::Loop const& loop);

/// The numbers of one section; measuring builds its convex loops.
struct Measures {
    explicit Measures(qel::Sectrix::CrossSection const& section);

    /// Of the exterior loop and the holes.
    std::size_t m_vertices = 0;
    std::size_t m_holes = 0;
    std::size_t m_namedPositions = 0;
    std::size_t m_convexLoops = 0;
    std::size_t m_addedPositions = 0;
    /// The area of the outline less those of the holes.
    double m_outlineArea = 0.0;
    /// The sum of the areas of the convex loops.
    double m_loopsArea = 0.0;
    /// How many of the convex loops are not convex after all.
    std::size_t m_faults = 0;
};

} // namespace example
