#include "sectrix_tools/measures/loop_measures.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <cmath>
#include <cstdint>

namespace qel::SectrixTools {
namespace {

using Point = Vec<2, double>;

constexpr double kPi = 3.14159265358979323846;

Point Between(Point const& from, Point const& to) {
    return {to[0] - from[0], to[1] - from[1]};
}
double Cross(Point const& a, Point const& b) {
    return a[0] * b[1] - a[1] * b[0];
}
double Dot(Point const& a, Point const& b) {
    return a[0] * b[0] + a[1] * b[1];
}

double AreaOf(std::vector<Point> const& points) {
    double twice = 0.0;
    for (std::size_t i = 1; i + 1 < points.size(); ++i)
        twice += Cross(Between(points[0], points[i]), Between(points[0], points[i + 1]));
    return twice / 2;
}

/// The edges of a closed polygon, those without length left out.
std::vector<Point> Edges(std::vector<Point> const& points) {
    std::vector<Point> edges;
    for (std::size_t i = 0; i < points.size(); ++i) {
        Point const edge = Between(points[i], points[(i + 1) % points.size()]);
        if (edge[0] != 0 || edge[1] != 0)
            edges.push_back(edge);
    }
    return edges;
}

} // namespace

std::vector<Vec<2, double>> Points(Sectrix::Loop const& loop) {
    std::vector<Vec<2, double>> points;
    points.reserve(loop.Vertices().size());
    for (auto const& vertex : loop.Vertices()) {
        bool found = false;
        auto const& position = loop.Positions().GetPosition(static_cast<std::uint64_t>(vertex.Index()), found);
        if (found)
            points.push_back(position.Position());
    }
    return points;
}

double SignedArea(Sectrix::Loop const& loop) {
    return AreaOf(Points(loop));
}

bool IsConvex(Sectrix::Loop const& loop, double straight) {
    auto const points = Points(loop);
    if (!(AreaOf(points) > 0))
        return false;
    auto const edges = Edges(points);
    double const sine = std::sin(straight);
    double turned = 0.0;
    for (std::size_t i = 0; i < edges.size(); ++i) {
        Point const a = edges[i];
        Point const b = edges[(i + 1) % edges.size()];
        if (!(Cross(a, b) >= -sine * std::sqrt(Dot(a, a) * Dot(b, b))))
            return false;
        turned += std::atan2(Cross(a, b), Dot(a, b));
    }
    return turned < 3 * kPi; // a full turn, not two
}

} // namespace qel::SectrixTools
