#include "sectrix/sections/piece_frame.h"
#include "sectrix/sections/turn.h"

#include <cmath>

namespace qel::Sectrix {

namespace {

/// At least the length of an edge.
double Reach(PieceFrame::Point const& p, PieceFrame::Point const& q) {
    return std::abs(p[0] - q[0]) + std::abs(p[1] - q[1]);
}

} // namespace

bool PieceFrame::Reset(std::vector<Point> const& corners, double turnError, double pointError) {
    // The tolerance moves each edge outward by tolerance / length. That moves a corner of edges a and b by at most
    // tolerance * (|a| + |b|) / |turn value|, and a convex polygon grows by no more than its corners move.
    double const tolerance = turnTolerance + turnError;
    double room = 0.0;
    bool isFlat = false;
    auto const makeRoom = [&](Point const& p, Point const& q, Point const& r) {
        double const turn = -Turn(p, q, r);
        isFlat = isFlat || !(turn > 4 * turnError);
        room = std::max(room, tolerance * (Reach(p, q) + Reach(q, r)) / turn);
    };
    m_box = {corners[0], corners[0]};
    m_box.Widen(corners[1]);
    for (std::size_t i = 2; i < corners.size(); ++i) {
        makeRoom(corners[i - 2], corners[i - 1], corners[i]);
        makeRoom(corners[i - 1], corners[i], corners[0]); // closed from here, the piece has these two corners
        makeRoom(corners[i], corners[0], corners[1]);
        m_box.Widen(corners[i]);
    }
    if (isFlat)
        return false;
    room += pointError;
    for (std::size_t axis = 0; axis < 2; ++axis) {
        m_box.m_min[axis] -= room;
        m_box.m_max[axis] += room;
    }
    // A triangle has no shorter piece, so that a point in it has passed all its sides, whatever its corners do.
    double const sideRoom = corners.size() == 3 ? pointError : room;
    m_sideCount = 0;
    AddSide(corners.back(), corners.front(), sideRoom, tolerance);
    std::size_t const stride = (corners.size() - 2) / comparedEdges + 1;
    for (std::size_t i = 0; i + 1 < corners.size(); i += stride)
        AddSide(corners[i], corners[i + 1], sideRoom, tolerance);
    return true;
}

/// Adds the inner side of an edge, moved outward by `room` and by what the tolerance on a turn value comes to.
void PieceFrame::AddSide(Point const& tail, Point const& head, double room, double tolerance) {
    double const dx = head[0] - tail[0];
    double const dy = head[1] - tail[1];
    double const bound = room * (std::abs(dx) + std::abs(dy)) + tolerance;
    m_sides[m_sideCount++] = {-dy, dx, dy * tail[0] - dx * tail[1] + bound};
}

} // namespace qel::Sectrix
