#pragma once

#include <algorithm>
#include <limits>

/// \file
/// Points and boxes of the plane, as the checks of geometry use them.

namespace qel::SectrixTools::Geometry {

struct Point {
    double x = 0.0, y = 0.0;
};

inline bool operator==(Point const& one, Point const& other) {
    return one.x == other.x && one.y == other.y;
}
inline bool operator!=(Point const& one, Point const& other) {
    return !(one == other);
}
/// By x, then by y: the order in which a line sweeps the plane that leans a little to the left.
inline bool operator<(Point const& one, Point const& other) {
    return one.x != other.x ? one.x < other.x : one.y < other.y;
}

/// Empty while it has been given nothing.
struct Box {
    Point m_min{std::numeric_limits<double>::infinity(), std::numeric_limits<double>::infinity()};
    Point m_max{-std::numeric_limits<double>::infinity(), -std::numeric_limits<double>::infinity()};

    void Add(Point const& point) {
        m_min = {std::min(m_min.x, point.x), std::min(m_min.y, point.y)};
        m_max = {std::max(m_max.x, point.x), std::max(m_max.y, point.y)};
    }
    void Add(Box const& box) {
        m_min = {std::min(m_min.x, box.m_min.x), std::min(m_min.y, box.m_min.y)};
        m_max = {std::max(m_max.x, box.m_max.x), std::max(m_max.y, box.m_max.y)};
    }
    bool Meets(Box const& box) const {
        return m_min.x <= box.m_max.x && box.m_min.x <= m_max.x && m_min.y <= box.m_max.y && box.m_min.y <= m_max.y;
    }
    bool Contains(Box const& box) const {
        return m_min.x <= box.m_min.x && box.m_max.x <= m_max.x && m_min.y <= box.m_min.y && box.m_max.y <= m_max.y;
    }
};

/// The box around a segment.
inline Box BoxOf(Point const& a, Point const& b) {
    Box box;
    box.Add(a);
    box.Add(b);
    return box;
}

} // namespace qel::SectrixTools::Geometry
