#pragma once

#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cutting/scratch.h"
#include "sectrix/sections/cutting/turn.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>

/// \file
/// The region around a convex piece.

namespace qel::Sectrix {

/// A convex region around a convex piece: a box, and half-planes along some of the edges. It promises that no point
/// outside of it counts as lying in the piece, nor in any that the piece shrinks to by the loss of its last
/// corners, with the tolerances of that test and all rounding counted in. Points inside may lie in the piece or
/// not.
///
/// The margin between piece and frame. A point counts as lying in the piece only if it is on the inner side of each
/// edge when that is moved outward, by as much as the tolerance on the turn value comes to: t divided by the length
/// of the edge. Take any direction. At one of the corners the piece reaches furthest in it, and the two edges e and
/// f that meet there keep the point from lying further than where their moved lines meet. That is away from the
/// corner by the vector (e + f) t / (e x f), where e x f is the turn at the corner, and along each axis by no more
/// than twice the extent of the piece times t through the least turn. A shorter piece has some of the same corners,
/// and no lesser turn.
class PieceFrame {
public:
    using Point = Vec<2, double>;
    using Box = BBox<2, double>;

    /// Makes the frame of a piece, without half-planes; false when a corner is too flat to say how far off a point
    /// may lie.
    /// \param corners     of the piece, counter-clockwise; each run of three or more from the first on is strictly
    /// convex.
    /// \param leastTurn   the least of the turns to the left at the corners of all these runs, positive.
    /// \param turnError   the greatest rounding error of a turn value among the points that are asked about.
    /// \param pointError  the same of a coordinate.
    bool Reset(Scratch::List<Point> const& corners, double leastTurn, double turnError, double pointError) {
        assert(corners.size() >= 3 && leastTurn > 0);
        m_sideCount = 0;
        if (!(leastTurn > 4 * turnError))
            return false;
        m_box = {};
        for (auto const& corner : corners)
            m_box.Widen(corner);
        double const factor = (kTurnTolerance + turnError) / (leastTurn - turnError);
        for (std::size_t axis = 0; axis < 2; ++axis) {
            m_margin[axis] = 2 * factor * (m_box.m_max[axis] - m_box.m_min[axis]) + pointError;
            m_box.m_min[axis] -= m_margin[axis];
            m_box.m_max[axis] += m_margin[axis];
        }
        return true;
    }

    /// Adds the half-planes to the frame that has been made of these corners.
    void AddSides(Scratch::List<Point> const& corners) {
        AddSide(corners, corners.back(), corners.front());
        std::size_t const stride = (corners.size() - 2) / kComparedEdges + 1;
        for (std::size_t i = 0; i + 1 < corners.size(); i += stride)
            AddSide(corners, corners[i], corners[i + 1]);
    }

    /// The box.
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
    /// A half-plane: the sum of x and y by these weights and the offset is negative outside.
    struct Side {
        double m_x, m_y, m_offset;
    };

    /// Adds the inner side of an edge, moved outward until all corners are on it wherever the margin may move them.
    void AddSide(Scratch::List<Point> const& corners, Point const& tail, Point const& head) {
        double const dx = head[0] - tail[0];
        double const dy = head[1] - tail[1];
        double least = dx * tail[1] - dy * tail[0];
        for (auto const& corner : corners)
            least = std::min(least, dx * corner[1] - dy * corner[0]);
        m_sides[m_sideCount++] = {-dy, dx, std::abs(dy) * m_margin[0] + std::abs(dx) * m_margin[1] - least};
    }

    /// At most this many edges of the chain, spread along it, are taken, and the chord.
    static constexpr std::size_t kComparedEdges = 4;

    Box m_box;
    /// How far the frame is from the piece, along each axis.
    Point m_margin{};
    Side m_sides[kComparedEdges + 1];
    std::size_t m_sideCount = 0;
};

} // namespace qel::Sectrix
