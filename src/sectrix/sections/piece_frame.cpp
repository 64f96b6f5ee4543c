#include "sectrix/sections/piece_frame.h"
#include "sectrix/sections/turn.h"

#include <cmath>

namespace qel::Sectrix {

bool PieceFrame::Reset(Scratch::List<Point> const& corners, double turnError, double pointError) {
    // A point in the piece has passed its edges, each moved outward by what the tolerance on a turn value comes to.
    // Where two moved edges meet, their corner has moved too. In every direction one of the moved corners lies
    // furthest, so that the frame may close around these.
    double const tolerance = turnTolerance + turnError;
    bool isFlat = false;
    m_moved.clear();
    auto const move = [&](Point const& p, Point const& q, Point const& r) {
        double const turn = -Turn(p, q, r);
        isFlat = isFlat || !(turn > 4 * turnError);
        double const factor = tolerance / (turn - turnError);
        m_moved.push_back(
            {q[0] + factor * (q[0] - p[0] + (q[0] - r[0])), q[1] + factor * (q[1] - p[1] + (q[1] - r[1]))});
    };
    for (std::size_t i = 2; i < corners.size(); ++i) {
        move(corners[i - 2], corners[i - 1], corners[i]);
        move(corners[i - 1], corners[i], corners[0]); // closed from here, the piece has these two corners
        move(corners[i], corners[0], corners[1]);
    }
    if (isFlat)
        return false;
    m_box = {};
    for (auto const& corner : m_moved)
        m_box.Widen(corner);
    for (std::size_t axis = 0; axis < 2; ++axis) {
        m_box.m_min[axis] -= pointError;
        m_box.m_max[axis] += pointError;
    }
    m_sideCount = 0;
    AddSide(corners.back(), corners.front(), pointError);
    std::size_t const stride = (corners.size() - 2) / comparedEdges + 1;
    for (std::size_t i = 0; i + 1 < corners.size(); i += stride)
        AddSide(corners[i], corners[i + 1], pointError);
    return true;
}

/// Adds the inner side of an edge, moved outward until all moved corners are on it.
void PieceFrame::AddSide(Point const& tail, Point const& head, double pointError) {
    double const dx = head[0] - tail[0];
    double const dy = head[1] - tail[1];
    double least = dx * tail[1] - dy * tail[0];
    for (auto const& corner : m_moved)
        least = std::min(least, dx * corner[1] - dy * corner[0]);
    m_sides[m_sideCount++] = {-dy, dx, pointError * (std::abs(dx) + std::abs(dy)) - least};
}

} // namespace qel::Sectrix
