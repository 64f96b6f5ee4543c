#pragma once

#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cutting/scratch.h"

#include <algorithm>
#include <cstddef>

/// \file
/// What lies around a convex piece.

namespace qel::Sectrix {

/// A frame outside of which no point counts as contained in a convex piece, or in one that this shrinks to by the
/// loss of its last corners, with the tolerances and all rounding counted in: a box, and the inner sides of some of
/// the edges.
class PieceFrame {
public:
    using Point = Vec<2, double>;
    using Box = BBox<2, double>;

    /// Makes the frame of a piece, without sides; false when a corner is too flat to say how far off a point may
    /// lie.
    /// \param corners     of the piece, counter-clockwise; each run of three or more from the first on is strictly
    /// convex.
    /// \param leastTurn   the least of the turns to the left at the corners of all these runs, positive.
    /// \param turnError   the greatest rounding error of a turn value among the points that are asked about.
    /// \param pointError  the same of a coordinate.
    bool Reset(Scratch::List<Point> const& corners, double leastTurn, double turnError, double pointError);

    /// Adds the sides to the frame that has been made of these corners.
    void AddSides(Scratch::List<Point> const& corners);

    Box const& Bounds() const { return m_box; }

    /// True only when no point of the box is inside the frame; may be false even so.
    bool IsBeyond(Box const& box) const {
        // One jump for all: which of them decides cannot be foretold.
        bool isOutside = box.m_min[0] > m_box.m_max[0];
        isOutside |= box.m_max[0] < m_box.m_min[0];
        isOutside |= box.m_min[1] > m_box.m_max[1];
        isOutside |= box.m_max[1] < m_box.m_min[1];
        for (std::size_t i = 0; i < m_sideCount; ++i) {
            auto const& side = m_sides[i];
            double const x = std::max(side.m_x * box.m_min[0], side.m_x * box.m_max[0]);
            double const y = std::max(side.m_y * box.m_min[1], side.m_y * box.m_max[1]);
            isOutside |= x + y + side.m_offset < 0.0;
        }
        return isOutside;
    }

private:
    /// The sum of x and y by these weights and the offset is negative outside.
    struct Side {
        double m_x, m_y, m_offset;
    };

    void AddSide(Scratch::List<Point> const& corners, Point const& tail, Point const& head);

    /// At most this many edges of the chain, spread along it, are taken, and the chord.
    static constexpr std::size_t kComparedEdges = 4;

    Box m_box;
    /// How far out the tolerances and rounding move a corner, along each axis.
    Point m_margin{};
    Side m_sides[kComparedEdges + 1];
    std::size_t m_sideCount = 0;
};

} // namespace qel::Sectrix
