#include "sectrix/sections/cutting/piece_frame.h"
#include "sectrix/sections/cutting/turn.h"

#include <cassert>
#include <cmath>

namespace qel::Sectrix {

bool PieceFrame::Reset(Scratch::List<Point> const& corners, double leastTurn, double turnError, double pointError) {
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

void PieceFrame::AddSides(Scratch::List<Point> const& corners) {
    AddSide(corners, corners.back(), corners.front());
    std::size_t const stride = (corners.size() - 2) / kComparedEdges + 1;
    for (std::size_t i = 0; i + 1 < corners.size(); i += stride)
        AddSide(corners, corners[i], corners[i + 1]);
}

/// Adds the inner side of an edge, moved outward until all corners are on it wherever the margin may move them.
void PieceFrame::AddSide(Scratch::List<Point> const& corners, Point const& tail, Point const& head) {
    double const dx = head[0] - tail[0];
    double const dy = head[1] - tail[1];
    double least = dx * tail[1] - dy * tail[0];
    for (auto const& corner : corners)
        least = std::min(least, dx * corner[1] - dy * corner[0]);
    m_sides[m_sideCount++] = {-dy, dx, std::abs(dy) * m_margin[0] + std::abs(dx) * m_margin[1] - least};
}

} // namespace qel::Sectrix
