#include "sectrix_tools/checks/geometry/edge_meeting.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/checks/geometry/orientation.h"

namespace qel::SectrixTools::Geometry {

Meeting Meet(Point const& a, Point const& b, Point const& c, Point const& d) {
    if (!BoxOf(a, b).Meets(BoxOf(c, d)))
        return Meeting::None;
    int const sideC = Orientation(a, b, c), sideD = Orientation(a, b, d);
    if (sideC == 0 && sideD == 0) {
        auto const start = std::max(std::min(a, b), std::min(c, d));
        auto const end = std::min(std::max(a, b), std::max(c, d));
        return start < end ? Meeting::Overlap : start == end ? Meeting::Corner : Meeting::None;
    }
    int const sideA = Orientation(c, d, a), sideB = Orientation(c, d, b);
    if (sideC * sideD > 0 || sideA * sideB > 0)
        return Meeting::None;
    if (sideC * sideD * sideA * sideB != 0)
        return Meeting::Cross;
    return a == c || a == d || b == c || b == d ? Meeting::Corner : Meeting::Touch;
}

bool IsInside(Point const& a, Point const& b, Point const& point) {
    auto const& [low, high] = std::minmax(a, b);
    return low < point && point < high && Orientation(a, b, point) == 0;
}

Point CrossingPoint(Point const& a, Point const& b, Point const& c, Point const& d) {
    double const fromLine = (d.x - c.x) * (a.y - c.y) - (d.y - c.y) * (a.x - c.x);
    double const slope = (d.y - c.y) * (b.x - a.x) - (d.x - c.x) * (b.y - a.y);
    double const ratio = slope != 0.0 ? std::clamp(fromLine / slope, 0.0, 1.0) : 0.5;
    auto const one = BoxOf(a, b), other = BoxOf(c, d);
    auto const within = [](double value, double low, double high) { return std::max(low, std::min(value, high)); };
    return {within(a.x + ratio * (b.x - a.x), std::max(one.m_min.x, other.m_min.x),
                   std::min(one.m_max.x, other.m_max.x)),
            within(a.y + ratio * (b.y - a.y), std::max(one.m_min.y, other.m_min.y),
                   std::min(one.m_max.y, other.m_max.y))};
}

} // namespace qel::SectrixTools::Geometry
