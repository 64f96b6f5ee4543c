#include "section_report/measures.h"

#include <cmath>
#include <cstdint>

namespace example {
namespace {

using qel::Sectrix::CrossSection;
using qel::Sectrix::Loop;

constexpr double kPi = 3.14159265358979323846;

Point Between(Point from, Point to) {
    return {to.x - from.x, to.y - from.y};
}
double Cross(Point a, Point b) {
    return a.x * b.y - a.y * b.x;
}
double Dot(Point a, Point b) {
    return a.x * b.x + a.y * b.y;
}

/// The edges of a closed polygon, those without length left out.
std::vector<Point> Edges(std::vector<Point> const& corners) {
    std::vector<Point> edges;
    for (std::size_t i = 0; i < corners.size(); ++i) {
        Point const edge = Between(corners[i], corners[(i + 1) % corners.size()]);
        if (edge.x != 0 || edge.y != 0)
            edges.push_back(edge);
    }
    return edges;
}

double AreaOf(std::vector<Point> const& corners) {
    double twice = 0.0;
    // From the first corner, so that far coordinates cancel early.
    for (std::size_t i = 1; i + 1 < corners.size(); ++i)
        twice += Cross(Between(corners[0], corners[i]), Between(corners[0], corners[i + 1]));
    return twice / 2;
}

} // namespace

std::vector<Point> Corners(Loop const& loop) {
    std::vector<Point> corners;
    for (auto const& vertex : loop.Vertices()) {
        bool found = false;
        auto const& point =
            loop.Positions().GetPosition(static_cast<std::uint64_t>(vertex.Index()), found).Position();
        if (found)
            corners.push_back({point[0], point[1]});
    }
    return corners;
}

double SignedArea(Loop const& loop) {
    return AreaOf(Corners(loop));
}

bool IsConvex(Loop const& loop) {
    constexpr double kRounding = 1e-9; // the sine of an angle that counts as none
    std::vector<Point> const edges = Edges(Corners(loop));
    double turned = 0.0;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        Point const a = edges[i];
        Point const b = edges[(i + 1) % edges.size()];
        if (Cross(a, b) < -kRounding * std::sqrt(Dot(a, a) * Dot(b, b)))
            return false;
        turned += std::atan2(Cross(a, b), Dot(a, b));
    }
    return turned < 3 * kPi; // a full turn, not two
}

Measures::Measures(CrossSection const& section)
    : m_vertices(section.ExteriorLoop().Vertices().size()), m_holes(section.InteriorLoops().size()),
      m_namedPositions(section.GetNamedPositionCount()), m_convexLoops(section.ConvexLoops().size()),
      m_addedPositions(section.AddedVertices().size()), m_outlineArea(SignedArea(section.ExteriorLoop())) {
    for (Loop const& hole : section.InteriorLoops()) {
        m_vertices += hole.Vertices().size();
        m_outlineArea += SignedArea(hole); // negative, since holes run clockwise
    }
    for (Loop const& loop : section.ConvexLoops()) {
        m_loopsArea += SignedArea(loop);
        m_faults += IsConvex(loop) ? 0 : 1;
    }
}

} // namespace example
