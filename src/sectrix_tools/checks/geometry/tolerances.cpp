#include "sectrix_tools/checks/geometry/tolerances.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <cmath>

namespace qel::SectrixTools::Geometry {

namespace {

/// A corner counts as straight when the cross product of its edges is not larger than this.
constexpr double kTurnTolerance = 1e-6;
/// Two points on one line count as the same when they are not further apart.
constexpr double kPointTolerance = 1e-3;
/// The sine of a turn that somebody means and sees.
constexpr double kLeastTurn = 0.01;
/// So many points stand in a message.
constexpr std::size_t kMostPoints = 5;

/// The larger of width and height, and the largest coordinate.
struct Size {
    double m_extent = 0.0, m_reach = 0.0;
};

Size SizeOf(Box const& box) {
    return {std::max(box.m_max.x - box.m_min.x, box.m_max.y - box.m_min.y),
            std::max({std::abs(box.m_min.x), std::abs(box.m_max.x), std::abs(box.m_min.y), std::abs(box.m_max.y)})};
}

bool IsBelowTurnTolerance(Point const& a, Point const& b, Point const& c) {
    double const turn = std::abs((b.x - a.x) * (c.y - b.y) - (b.y - a.y) * (c.x - b.x));
    double const lengths = std::sqrt((b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y)) *
                           std::sqrt((c.x - b.x) * (c.x - b.x) + (c.y - b.y) * (c.y - b.y));
    return turn <= kTurnTolerance && turn > kLeastTurn * lengths;
}

bool IsBelowPointTolerance(Point const& a, Point const& b) {
    return (b.x - a.x) * (b.x - a.x) + (b.y - a.y) * (b.y - a.y) <= kPointTolerance * kPointTolerance;
}

void AddCorners(Boundary const& boundary, std::vector<std::size_t> const& corners, char const* what,
                FindingList& findings) {
    if (corners.empty())
        return;
    std::string message = std::to_string(corners.size()) + what;
    for (std::size_t i = 0; i < std::min(corners.size(), kMostPoints); ++i)
        message += (i > 0 ? ", " : "") + PointText(boundary.PointAt(corners[i]));
    if (corners.size() > kMostPoints)
        message += " and " + std::to_string(corners.size() - kMostPoints) + " more";
    auto const& first = boundary.At(corners[0]);
    findings.Add(Severity::Warning, "below-tolerance", message, {first.m_loop, first.m_vertex}, first.m_point);
}

} // namespace

void CheckTolerances(Boundary const& boundary, FindingList& findings) {
    Box all;
    for (std::size_t loop = 0; loop < boundary.LoopCount(); ++loop) {
        std::vector<std::size_t> straight, close;
        for (auto corner = boundary.Begin(loop); corner < boundary.End(loop); ++corner) {
            auto const& point = boundary.PointAt(corner);
            all.Add(point);
            if (IsBelowTurnTolerance(boundary.PointAt(boundary.Previous(corner)), point, boundary.EdgeEnd(corner)))
                straight.push_back(corner);
            if (IsBelowPointTolerance(point, boundary.EdgeEnd(corner)))
                close.push_back(corner);
        }
        AddCorners(
            boundary, straight,
            " corners count as straight when the section is cut, since they turn by a cross product of at most "
            "1e-06: ",
            findings);
        AddCorners(boundary, close,
                   " edges are at most 0.001 long, and may count as one point when the section is cut: from ",
                   findings);
    }
    auto const [extent, reach] = SizeOf(all);
    double const rounding = 0x1p-53 * reach * extent;
    if (boundary.CornerCount() > 0 && rounding > kTurnTolerance)
        findings.Add(Severity::Warning, "beyond-tolerance",
                     "the section has coordinates up to " + NumberText(reach) +
                         ", where rounding outweighs the tolerance of cutting, 1e-06",
                     {});
}

double RoundingOfAreas(Box const& box) {
    auto const [extent, reach] = SizeOf(box);
    return 0x1p-50 * reach * extent;
}

} // namespace qel::SectrixTools::Geometry
