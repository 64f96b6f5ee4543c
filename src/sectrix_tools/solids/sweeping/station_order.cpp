#include "sectrix_tools/solids/sweeping/station_order.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/solids/sweeping/space.h"

namespace qel::SectrixTools::Solids {
namespace {

/// The sine of the angle at which a point, seen from a station, counts as lying in its plane.
constexpr double kInPlane = 1e-9;

/// Twice the area of a ring as a vector, towards those who see it run counter-clockwise.
Point3 AreaVector(TriangleMesh const& mesh, PlacedRing const& ring) {
    Point3 const& origin = mesh.m_points[ring.Point(0)];
    Point3 sum;
    for (std::size_t place = 1; place < ring.PointCount(); ++place)
        sum = Sum(sum, Cross(Difference(mesh.m_points[ring.Point(place)], origin),
                             Difference(mesh.m_points[ring.Point(place + 1)], origin)));
    return sum;
}

} // namespace

int SideOf(TriangleMesh const& mesh, PlacedRing const& outline, PlacedRing const& other) {
    Point3 const& origin = mesh.m_points[outline.Point(0)];
    Point3 const normal = AreaVector(mesh, outline);
    std::size_t inFront = 0, behind = 0;
    for (std::size_t place = 0; place < other.PointCount(); ++place) {
        Point3 const offset = Difference(mesh.m_points[other.Point(place)], origin);
        double const height = Dot(offset, normal), least = kInPlane * Length(offset) * Length(normal);
        inFront += height > least;
        behind += height < -least;
    }
    return inFront == other.PointCount() ? 1 : behind == other.PointCount() ? -1 : 0;
}

int Direction(TriangleMesh const& mesh, PlacedStation const& lower, PlacedStation const& upper) {
    int const direction = SideOf(mesh, lower[0], upper[0]);
    return SideOf(mesh, upper[0], lower[0]) == -direction ? direction : 0;
}

} // namespace qel::SectrixTools::Solids
