#include "sectrix_tools/solids/sweeping/triangulation.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <cmath>
#include <set>
#include <tuple>

namespace qel::SectrixTools::Solids {
namespace {

/// The corners of a polygon that are left, and those among them that can be cut off, best first.
class Ears {
public:
    Ears(std::vector<Point2> const& polygon, double straight) : m_polygon(polygon), m_straight(straight) {
        for (std::size_t place = 0; place < polygon.size(); ++place)
            m_corners.push_back({(place + polygon.size() - 1) % polygon.size(), (place + 1) % polygon.size()});
        for (std::size_t place = 0; place < polygon.size(); ++place)
            Enter(place);
    }

    bool IsEmpty() const { return m_order.empty(); }

    /// Takes the best ear off the polygon and returns it.
    std::array<std::size_t, 3> Cut() {
        std::size_t const place = std::get<2>(*m_order.begin());
        auto const [before, after, key] = m_corners[place];
        m_order.erase(m_order.begin());
        m_order.erase(m_corners[before].m_key);
        m_order.erase(m_corners[after].m_key);
        m_corners[before].m_after = after;
        m_corners[after].m_before = before;
        Enter(before);
        Enter(after);
        return {before, place, after};
    }

private:
    /// Straight corners go last, those first that are least so; the others by their area.
    using Key = std::tuple<bool, double, std::size_t>;

    struct Corner {
        std::size_t m_before;
        std::size_t m_after;
        Key m_key = {};
    };

    /// Puts a corner in order, unless it turns to the right or not at all.
    void Enter(std::size_t place) {
        Corner& corner = m_corners[place];
        Point2 const &a = m_polygon[corner.m_before], &b = m_polygon[place], &c = m_polygon[corner.m_after];
        double const area = TwiceArea(a, b, c);
        double const chord = std::sqrt((c[0] - a[0]) * (c[0] - a[0]) + (c[1] - a[1]) * (c[1] - a[1]));
        bool const isStraight = area <= m_straight * chord;
        corner.m_key = Key(isStraight, isStraight ? -area : area, place);
        if (area > 0)
            m_order.insert(corner.m_key);
    }

    std::vector<Point2> const& m_polygon;
    double m_straight;
    std::vector<Corner> m_corners;
    std::set<Key> m_order;
};

} // namespace

double TwiceArea(Point2 const& a, Point2 const& b, Point2 const& c) {
    return (b[0] - a[0]) * (c[1] - a[1]) - (b[1] - a[1]) * (c[0] - a[0]);
}

Triangles Triangulate(std::vector<Point2> const& polygon, double straight) {
    Triangles triangles;
    if (polygon.size() < 3)
        return triangles;
    for (Ears ears(polygon, straight); triangles.size() + 2 < polygon.size();) {
        if (ears.IsEmpty())
            return {};
        triangles.push_back(ears.Cut());
    }
    return triangles;
}

} // namespace qel::SectrixTools::Solids
