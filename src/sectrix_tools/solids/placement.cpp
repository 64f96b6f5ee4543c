#include "sectrix_tools/solids/placement.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/solids/sweeping/space.h"

namespace qel::SectrixTools {
namespace {

using Solids::Cross;
using Solids::Difference;
using Solids::Dot;
using Solids::Length;
using Solids::Point3;
using Solids::Scaled;
using Solids::Sum;

/// The sine of an angle that counts as none between the direction and up.
constexpr double kOneLine = 1e-12;

/// Not a number where there is no direction.
Point3 Direction(Point3 const& vector) {
    return Scaled(vector, 1 / Length(vector));
}

/// Perpendicular to two directions; not a number where they lie on one line.
Point3 Across(Point3 const& ahead, Point3 const& up) {
    Point3 const right = Cross(ahead, up);
    return Direction(Length(right) > kOneLine ? right : Point3{});
}

/// The tangent at `b` of the circle through three points: the directions to and from it, the nearer one weighing
/// more.
Point3 Tangent(Point3 const& a, Point3 const& b, Point3 const& c) {
    Point3 const before = Difference(b, a), after = Difference(c, b);
    double const toSquare = 1 / Dot(before, before), fromSquare = 1 / Dot(after, after);
    return Sum(Scaled(before, toSquare), Scaled(after, fromSquare));
}

/// The tangent at `a` of the circle through three points: that at `b`, mirrored in the chord between them.
Point3 TangentAtStart(Point3 const& a, Point3 const& b, Point3 const& c) {
    Point3 const chord = Direction(Difference(b, a)), tangent = Tangent(a, b, c);
    return Difference(Scaled(chord, 2 * Dot(tangent, chord)), tangent);
}

Point3 TangentOfCurve(std::vector<Point3> const& points, std::size_t place) {
    std::size_t const last = points.size() - 1;
    if (last == 1)
        return Difference(points[1], points[0]);
    if (place == 0)
        return TangentAtStart(points[0], points[1], points[2]);
    if (place == last)
        return Scaled(TangentAtStart(points[last], points[last - 1], points[last - 2]), -1);
    return Tangent(points[place - 1], points[place], points[place + 1]);
}

} // namespace

Mat<4, double> Placement(Vec<3, double> const& origin, Vec<3, double> const& direction, Vec<3, double> const& up,
                         double twist) {
    Point3 const ahead = Direction(direction);
    Point3 const right = Across(ahead, Direction(up));
    Point3 const upright = Cross(right, ahead);
    double const cosine = std::cos(twist), sine = std::sin(twist);
    Point3 const rows[4] = {Sum(Scaled(right, cosine), Scaled(upright, sine)),
                            Sum(Scaled(right, -sine), Scaled(upright, cosine)), Scaled(ahead, -1), origin};
    Mat<4, double> placement;
    for (std::size_t row = 0; row < 4; ++row)
        for (std::size_t column = 0; column < 3; ++column)
            placement[4 * row + column] = rows[row][column];
    return placement;
}

std::vector<Mat<4, double>> PlacementsAlongLine(Vec<3, double> const& from, Vec<3, double> const& to,
                                                std::size_t count, Vec<3, double> const& up) {
    std::vector<Mat<4, double>> placements;
    for (std::size_t i = 0; count > 1 && i < count; ++i) {
        double const ratio = static_cast<double>(i) / static_cast<double>(count - 1);
        placements.push_back(Placement(Sum(Scaled(from, 1 - ratio), Scaled(to, ratio)), Difference(to, from), up));
    }
    return placements;
}

std::vector<Mat<4, double>> PlacementsAlongCurve(std::vector<Vec<3, double>> const& points,
                                                 Vec<3, double> const& up, std::vector<double> const& twists) {
    std::vector<Mat<4, double>> placements;
    for (std::size_t i = 0; points.size() > 1 && i < points.size(); ++i)
        placements.push_back(
            Placement(points[i], TangentOfCurve(points, i), up, i < twists.size() ? twists[i] : 0.0));
    return placements;
}

} // namespace qel::SectrixTools
