#include "sectrix/foundation/strict_arithmetic.h"
#include "sectrix/sections/cross_section.h"

#include <limits>
#include <optional>

namespace qel::Sectrix {

namespace {

using Point = Vec<2, double>;

/// Where the bridge from a hole meets the outline.
struct BridgeFoot {
    Point m_point;
    /// The place of the outline's vertex at the foot, or of the one before the foot; -1 while there is no
    /// candidate.
    int m_place = -1;
    /// Where the foot lies on an edge between its ends, the place at the end of that edge; else -1.
    int m_farPlace = -1;

    void TakeIfNearer(Point const& point, int place, int farPlace) {
        if (point[0] > m_point[0])
            *this = {point, place, farPlace};
    }
};

/// Lets the edge from `a` at place `i` to `b` at place `j` compete for the foot of a ray that runs from `h` to the
/// left.
void MeetEdge(Point const& a, int i, Point const& b, int j, Point const& h, BridgeFoot& best) {
    double const tolerance = 1e-6; // on the product of the two height differences
    if (!(a[0] < h[0]) && !(b[0] < h[0]))
        return;
    double const product = (b[1] - h[1]) * (a[1] - h[1]);
    if (product * product > tolerance * tolerance) {
        if (!(product < -tolerance))
            return; // both ends on one side of the ray
        double const x = (h[1] - a[1]) * (b[0] - a[0]) / (b[1] - a[1]) + a[0];
        if (x < h[0])
            best.TakeIfNearer({x, h[1]}, i, j);
    } else {
        // An end lies at the height of the ray. Both compete, without a look at which one it is.
        best.TakeIfNearer(a, i, -1);
        best.TakeIfNearer(b, j, -1);
    }
}

} // namespace

void CrossSection::RemoveHoles() const {
    while (RemoveHole()) {
    }
}

bool CrossSection::RemoveHole() const {
    // The hole that reaches furthest left: all others that its ray could meet are part of the outline by now.
    std::size_t hole = 0;
    int holePlace = -1;
    Point h{std::numeric_limits<double>::max(), 0.0};
    for (std::size_t entry = 1; entry < m_convexLoops.size(); ++entry) {
        int const place = m_convexLoops[entry].LeftMostVertex();
        if (place < 0)
            continue;
        auto const* position =
            m_positions->Find(m_convexLoops[entry].m_vertices[static_cast<std::size_t>(place)].Index());
        if (position && position->Position()[0] < h[0]) {
            h = position->Position();
            hole = entry;
            holePlace = place;
        }
    }
    if (holePlace < 0)
        return false;

    auto& outline = m_convexLoops[0];
    int const leftMost = outline.LeftMostVertex();
    if (leftMost < 0)
        return false;
    std::vector<Point> points;
    points.reserve(outline.m_vertices.size());
    for (auto const& vertex : outline.m_vertices) {
        auto const* position = m_positions->Find(vertex.Index());
        if (!position)
            return false;
        points.push_back(position->Position());
    }

    BridgeFoot foot;
    foot.m_point = points[static_cast<std::size_t>(leftMost)];
    foot.m_point[0] -= 1.0; // every point of the outline is nearer
    for (std::size_t i = 0; i < points.size(); ++i) {
        auto const j = i + 1 < points.size() ? i + 1 : 0;
        MeetEdge(points[i], static_cast<int>(i), points[j], static_cast<int>(j), h, foot);
    }
    if (foot.m_place < 0)
        return false;

    if (foot.m_farPlace >= 0) {
        int const index = m_positions->AddPosition(foot.m_point);
        outline.InsertVertex(index, foot.m_farPlace);
        m_addedVertices.push_back(index);
        foot.m_place = foot.m_farPlace;
    }
    outline.Add(m_convexLoops[hole], foot.m_place, holePlace, -1);
    m_convexLoops.erase(m_convexLoops.begin() + static_cast<std::ptrdiff_t>(hole));
    return true;
}

} // namespace qel::Sectrix
