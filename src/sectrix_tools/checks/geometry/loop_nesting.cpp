#include "sectrix_tools/checks/geometry/loop_nesting.h"

#include "sectrix_tools/checks/geometry/box_tree.h"
#include "sectrix_tools/checks/geometry/edge_meeting.h"
#include "sectrix_tools/checks/geometry/orientation.h"

#include <algorithm>
#include <cmath>
#include <memory>

namespace qel::SectrixTools::Geometry {

namespace {

enum class Location { Outside, On, Inside };

class Nester {
public:
    Nester(Boundary const& boundary, LoopPairs const& crossing)
        : m_boundary(boundary), m_crossing(crossing), m_edges(boundary.LoopCount()) {
        m_boxes.reserve(boundary.LoopCount());
        for (std::size_t loop = 0; loop < boundary.LoopCount(); ++loop)
            m_boxes.push_back(boundary.LoopBox(loop));
    }

    Nesting Run() {
        Nesting nesting;
        auto const holes = HolesByPlace();
        std::vector<Box> boxes;
        boxes.reserve(holes.size());
        for (auto const hole : holes)
            boxes.push_back(m_boxes[hole]);
        BoxTree const tree(std::move(boxes));
        for (std::size_t hole = 1; hole < m_boundary.LoopCount(); ++hole) {
            if (m_boundary.IsEmpty(hole))
                continue;
            if (!m_boundary.IsEmpty(0) && !DoCross(0, hole))
                PlaceInOutline(hole, nesting);
            auto const first = nesting.m_inside.size();
            tree.Visit([&](Box const& box) { return box.Contains(m_boxes[hole]); },
                       [&](std::size_t place) {
                           if (IsInside(hole, holes[place]))
                               nesting.m_inside.emplace_back(hole, holes[place]);
                       });
            std::sort(nesting.m_inside.begin() + static_cast<std::ptrdiff_t>(first), nesting.m_inside.end());
        }
        return nesting;
    }

private:
    bool DoCross(std::size_t one, std::size_t other) const {
        return m_crossing.count(std::minmax(static_cast<int>(one), static_cast<int>(other))) > 0;
    }

    void PlaceInOutline(std::size_t hole, Nesting& nesting) {
        auto const location = Locate(hole, 0);
        if (location == Location::Outside)
            nesting.m_outside.push_back(hole);
        else if (location == Location::On)
            nesting.m_on.push_back(hole);
    }

    bool IsInside(std::size_t hole, std::size_t outer) {
        if (hole == outer || DoCross(hole, outer))
            return false;
        auto const location = Locate(hole, outer);
        return location == Location::Inside || (location == Location::On && outer < hole);
    }

    /// The interior loops in columns from left to right, and upward in each: close to each other in the list where
    /// they are so in the plane.
    std::vector<std::size_t> HolesByPlace() const {
        std::vector<std::size_t> holes;
        for (std::size_t hole = 1; hole < m_boundary.LoopCount(); ++hole)
            if (!m_boundary.IsEmpty(hole))
                holes.push_back(hole);
        auto const sort = [this, &holes](std::size_t begin, std::size_t end, double Point::*axis) {
            std::sort(holes.begin() + static_cast<std::ptrdiff_t>(begin),
                      holes.begin() + static_cast<std::ptrdiff_t>(end),
                      [this, axis](std::size_t one, std::size_t other) {
                          auto const a = m_boxes[one].m_min.*axis, b = m_boxes[other].m_min.*axis;
                          return a != b ? a < b : one < other;
                      });
        };
        sort(0, holes.size(), &Point::x);
        auto const column = static_cast<std::size_t>(std::sqrt(static_cast<double>(8 * holes.size()))) + 1;
        for (std::size_t begin = 0; begin < holes.size(); begin += column)
            sort(begin, std::min(begin + column, holes.size()), &Point::y);
        return holes;
    }

    /// Where a loop lies in another that it does not cross. Its corners may all lie on that; then the middles of
    /// its edges tell, and are far enough from it for their rounding.
    Location Locate(std::size_t loop, std::size_t outer) {
        for (int const middles : {0, 1})
            for (auto corner = m_boundary.Begin(loop); corner < m_boundary.End(loop); ++corner) {
                auto const &a = m_boundary.PointAt(corner), &b = m_boundary.EdgeEnd(corner);
                auto const location =
                    LocatePoint(middles ? Point{0.5 * a.x + 0.5 * b.x, 0.5 * a.y + 0.5 * b.y} : a, outer);
                if (location != Location::On)
                    return location;
            }
        return Location::On;
    }

    Location LocatePoint(Point const& point, std::size_t loop) {
        auto const& box = m_boxes[loop];
        if (!box.Meets(BoxOf(point, point)))
            return Location::Outside;
        bool isOn = false, isInside = false;
        EdgesOf(loop).Visit(
            // All that a ray downward from the point may meet.
            [&](Box const& edges) {
                return edges.m_min.x <= point.x && point.x <= edges.m_max.x && edges.m_min.y <= point.y;
            },
            [&](std::size_t place) {
                auto const edge = m_boundary.Begin(loop) + place;
                auto const &a = m_boundary.PointAt(edge), &b = m_boundary.EdgeEnd(edge);
                isOn = isOn || a == point || Geometry::IsInside(a, b, point);
                if ((a.x <= point.x) != (b.x <= point.x) && Orientation(std::min(a, b), std::max(a, b), point) > 0)
                    isInside = !isInside;
            });
        return isOn ? Location::On : isInside ? Location::Inside : Location::Outside;
    }

    BoxTree const& EdgesOf(std::size_t loop) {
        if (!m_edges[loop]) {
            std::vector<Box> boxes;
            for (auto edge = m_boundary.Begin(loop); edge < m_boundary.End(loop); ++edge)
                boxes.push_back(m_boundary.EdgeBox(edge));
            m_edges[loop] = std::make_unique<BoxTree>(std::move(boxes));
        }
        return *m_edges[loop];
    }

    Boundary const& m_boundary;
    LoopPairs const& m_crossing;
    /// Around each loop.
    std::vector<Box> m_boxes;
    /// The edges of each loop that something was located in.
    std::vector<std::unique_ptr<BoxTree>> m_edges;
};

} // namespace

Nesting FindNesting(Boundary const& boundary, LoopPairs const& crossing) {
    return Nester(boundary, crossing).Run();
}

} // namespace qel::SectrixTools::Geometry
