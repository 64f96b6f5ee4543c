#include "sectrix_tools/checks/geometry/boundary.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"

namespace qel::SectrixTools::Geometry {

double SignedArea(std::vector<Point> const& corners) {
    double twice = 0.0;
    for (std::size_t i = 2; i < corners.size(); ++i) {
        auto const &a = corners[0], &b = corners[i - 1], &c = corners[i];
        twice += (b.x - a.x) * (c.y - a.y) - (b.y - a.y) * (c.x - a.x);
    }
    return 0.5 * twice;
}

double Boundary::SignedArea(std::size_t loop) const {
    std::vector<Point> corners;
    corners.reserve(End(loop) - Begin(loop));
    for (auto corner = Begin(loop); corner < End(loop); ++corner)
        corners.push_back(PointAt(corner));
    return Geometry::SignedArea(corners);
}

} // namespace qel::SectrixTools::Geometry
