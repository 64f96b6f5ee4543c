#include "sectrix_tools/drawings/space/isometry.h"

#include <algorithm>
#include <cmath>

namespace qel::SectrixTools::Pictures {

using Sectrix::Position;

Vector VectorTo(Position const& position) {
    return {position.X(), position.Y(), position.Z()};
}

Vector operator-(Vector const& a, Vector const& b) {
    return {a[0] - b[0], a[1] - b[1], a[2] - b[2]};
}

double Product(Vector const& a, Vector const& b) {
    return a[0] * b[0] + a[1] * b[1] + a[2] * b[2];
}

Vector Cross(Vector const& a, Vector const& b) {
    return {a[1] * b[2] - a[2] * b[1], a[2] * b[0] - a[0] * b[2], a[0] * b[1] - a[1] * b[0]};
}

Vector Unit(Vector const& vector) {
    double const length = std::sqrt(Product(vector, vector));
    return length > 0 ? Vector{vector[0] / length, vector[1] / length, vector[2] / length} : vector;
}

Vector Moved(Vector const& from, Vector const& along, double ratio) {
    return {from[0] + along[0] * ratio, from[1] + along[1] * ratio, from[2] + along[2] * ratio};
}

Point Isometric(Vector const& point) {
    constexpr double kCosine30 = 0.86602540378443865;
    return {(point[1] - point[0]) * kCosine30, point[2] - (point[0] + point[1]) / 2};
}

bool HasPlace(Vector const& point) {
    constexpr double kFarthest = 1e70;
    return std::abs(point[0]) < kFarthest && std::abs(point[1]) < kFarthest && std::abs(point[2]) < kFarthest;
}

View FitView(std::vector<Point> const& points, Point corner, Point size) {
    Point low, high;
    for (Point const& point : points) {
        bool const first = &point == points.data();
        low = first ? point : Point{std::min(low.x, point.x), std::min(low.y, point.y)};
        high = first ? point : Point{std::max(high.x, point.x), std::max(high.y, point.y)};
    }
    if (!(high.x > low.x) && !(high.y > low.y))
        high.x = std::nextafter(low.x + 1.0, HUGE_VAL);
    return View(low, high, corner, size);
}

} // namespace qel::SectrixTools::Pictures
