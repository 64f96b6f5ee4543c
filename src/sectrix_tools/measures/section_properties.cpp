#include "sectrix_tools/measures/section_properties.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/measures/loop_measures.h"

#include <cmath>
#include <vector>

namespace qel::SectrixTools {
namespace {

using Point = Vec<2, double>;
using Polygons = std::vector<std::vector<Point>>;

/// What is smaller than this in proportion to what it is a difference of, is rounding.
constexpr double kRounding = 1e-13;

/// Integrals over an area, about some point.
struct Moments {
    double m_area = 0.0;
    double m_x = 0.0;
    double m_y = 0.0;
    double m_xx = 0.0;
    double m_yy = 0.0;
    double m_xy = 0.0;

    /// Adds the triangle of the point about which they are, `a` and `b`, negative when that runs clockwise.
    void Add(Point const& a, Point const& b) {
        double const cross = a[0] * b[1] - b[0] * a[1];
        m_area += cross / 2;
        m_x += cross * (a[0] + b[0]) / 6;
        m_y += cross * (a[1] + b[1]) / 6;
        m_xx += cross * (a[0] * a[0] + a[0] * b[0] + b[0] * b[0]) / 12;
        m_yy += cross * (a[1] * a[1] + a[1] * b[1] + b[1] * b[1]) / 12;
        m_xy += cross * (a[0] * b[1] + 2 * a[0] * a[1] + 2 * b[0] * b[1] + b[0] * a[1]) / 24;
    }
};

qel::BBox<2, double> BoxOf(Polygons const& polygons) {
    qel::BBox<2, double> box;
    for (auto const& polygon : polygons)
        for (Point const& point : polygon)
            box.Widen(point);
    return box;
}

Moments MomentsOf(Polygons const& polygons, Point const& middle) {
    Moments moments;
    for (auto const& polygon : polygons) {
        if (polygon.empty())
            continue;
        Point from{polygon.back()[0] - middle[0], polygon.back()[1] - middle[1]};
        for (Point const& point : polygon) {
            Point const to{point[0] - middle[0], point[1] - middle[1]};
            moments.Add(from, to);
            from = to;
        }
    }
    return moments;
}

double Length(std::vector<Point> const& polygon) {
    double length = 0.0;
    for (std::size_t i = 0; i < polygon.size(); ++i) {
        Point const& from = polygon[i];
        Point const& to = polygon[(i + 1) % polygon.size()];
        double const dx = to[0] - from[0], dy = to[1] - from[1];
        length += std::sqrt(dx * dx + dy * dy);
    }
    return length;
}

void FindPrincipalMoments(SectionProperties& properties) {
    double const mean = (properties.m_ix + properties.m_iy) / 2;
    double const half = (properties.m_ix - properties.m_iy) / 2;
    double const radius = std::sqrt(half * half + properties.m_ixy * properties.m_ixy);
    properties.m_i1 = mean + radius;
    properties.m_i2 = mean - radius;
    // Rounding alone gives no direction, nor one side of the vertical.
    double const product = std::abs(properties.m_ixy) > kRounding * mean ? properties.m_ixy : 0.0;
    properties.m_angle = radius > kRounding * mean ? std::atan2(0.0 - product, half) / 2 : 0.0;
}

/// \param box  around the section, about its centroid.
void FindFibres(SectionProperties& properties, qel::BBox<2, double> const& box) {
    properties.m_top = box.m_max[1];
    properties.m_bottom = -box.m_min[1];
    properties.m_left = -box.m_min[0];
    properties.m_right = box.m_max[0];
    properties.m_sectionModulusTop = properties.m_ix / properties.m_top;
    properties.m_sectionModulusBottom = properties.m_ix / properties.m_bottom;
    properties.m_sectionModulusLeft = properties.m_iy / properties.m_left;
    properties.m_sectionModulusRight = properties.m_iy / properties.m_right;
    properties.m_radiusX = std::sqrt(properties.m_ix / properties.m_area);
    properties.m_radiusY = std::sqrt(properties.m_iy / properties.m_area);
}

SectionProperties PropertiesOf(Polygons const& polygons) {
    auto const box = BoxOf(polygons);
    Point const size{box.m_max[0] - box.m_min[0], box.m_max[1] - box.m_min[1]};
    Point const middle{box.m_min[0] + size[0] / 2, box.m_min[1] + size[1] / 2};
    Moments const sums = MomentsOf(polygons, middle);
    SectionProperties properties;
    properties.m_area = sums.m_area;
    // Without a point there is no middle, and there are no moments.
    properties.m_firstMomentX = sums.m_area == 0 ? sums.m_y : sums.m_y + middle[1] * sums.m_area;
    properties.m_firstMomentY = sums.m_area == 0 ? sums.m_x : sums.m_x + middle[0] * sums.m_area;
    if (!(sums.m_area > kRounding * size[0] * size[1]))
        return properties;
    double const x = sums.m_x / sums.m_area, y = sums.m_y / sums.m_area;
    properties.m_centroid = {middle[0] + x, middle[1] + y};
    properties.m_ix = sums.m_yy - sums.m_y * y;
    properties.m_iy = sums.m_xx - sums.m_x * x;
    properties.m_ixy = sums.m_xy - sums.m_x * y;
    FindPrincipalMoments(properties);
    FindFibres(properties, {{(box.m_min[0] - middle[0]) - x, (box.m_min[1] - middle[1]) - y},
                            {(box.m_max[0] - middle[0]) - x, (box.m_max[1] - middle[1]) - y}});
    return properties;
}

} // namespace

SectionProperties PropertiesOf(Sectrix::CrossSection const& section) {
    Polygons polygons{Points(section.ExteriorLoop())};
    for (auto const& hole : section.InteriorLoops())
        polygons.push_back(Points(hole));
    SectionProperties properties = PropertiesOf(polygons);
    properties.m_outerPerimeter = Length(polygons[0]);
    properties.m_innerPerimeter = 0.0;
    for (std::size_t i = 1; i < polygons.size(); ++i)
        properties.m_innerPerimeter += Length(polygons[i]);
    return properties;
}

SectionProperties PropertiesOfConvexLoops(Sectrix::CrossSection const& section) {
    Polygons polygons;
    for (auto const& loop : section.ConvexLoops())
        polygons.push_back(Points(loop));
    return PropertiesOf(polygons);
}

} // namespace qel::SectrixTools
