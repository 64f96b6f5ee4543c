#include "sectrix_tools/checks/geometry/strand.h"

#include "sectrix_tools/checks/geometry/orientation.h"

namespace qel::SectrixTools::Geometry {

Side SideOf(Boundary const& boundary, Strand const& strand, Point const& point, Point const& target) {
    auto const& ahead = boundary.PointAt(NextCorner(boundary, strand, Way::Ahead));
    auto const& back = boundary.PointAt(NextCorner(boundary, strand, Way::Back));
    if (AreSameRay(point, ahead, target))
        return Side::OnAhead;
    if (AreSameRay(point, back, target))
        return Side::OnBack;
    // The left is what a ray sweeps that turns counter-clockwise from ahead to back. In a spike that is nothing.
    auto const isBetween = [&](Point const& from, Point const& to) {
        return Orientation(point, from, target) > 0 && Orientation(point, target, to) > 0;
    };
    int const turn = Orientation(point, ahead, back);
    bool const isLeft = turn > 0   ? isBetween(ahead, back)
                        : turn < 0 ? !isBetween(back, ahead)
                                   : !IsAhead(point, ahead, back) && Orientation(point, ahead, target) > 0;
    return isLeft ? Side::Left : Side::Right;
}

} // namespace qel::SectrixTools::Geometry
