#pragma once

#include "sectrix_tools/checks/geometry/point.h"

#include <cstddef>
#include <vector>

/// \file
/// The loops of a section as corners and edges.

namespace qel::SectrixTools::Geometry {

struct Corner {
    Point m_point;
    /// 0 for the exterior loop, 1 onward for the interior ones.
    int m_loop = 0;
    /// The place of its vertex in its loop.
    int m_vertex = 0;
};

/// The loops of a section in one list of corners. An edge has the number of the corner that it starts from.
///
/// No two corners in a row are the same point. A loop that cannot be looked at has no corners here; any other has
/// at least three.
class Boundary {
public:
    /// Appends the next loop.
    void AddLoop(std::vector<Corner> const& corners) {
        m_corners.insert(m_corners.end(), corners.begin(), corners.end());
        m_starts.push_back(m_corners.size());
    }

    std::size_t CornerCount() const { return m_corners.size(); }
    std::size_t LoopCount() const { return m_starts.size() - 1; }
    Corner const& At(std::size_t corner) const { return m_corners[corner]; }
    Point const& PointAt(std::size_t corner) const { return m_corners[corner].m_point; }

    /// The first corner of a loop, and the one behind its last.
    std::size_t Begin(std::size_t loop) const { return m_starts[loop]; }
    std::size_t End(std::size_t loop) const { return m_starts[loop + 1]; }
    bool IsEmpty(std::size_t loop) const { return Begin(loop) == End(loop); }

    std::size_t Next(std::size_t corner) const {
        auto const loop = static_cast<std::size_t>(m_corners[corner].m_loop);
        return corner + 1 < End(loop) ? corner + 1 : Begin(loop);
    }
    std::size_t Previous(std::size_t corner) const {
        auto const loop = static_cast<std::size_t>(m_corners[corner].m_loop);
        return corner > Begin(loop) ? corner - 1 : End(loop) - 1;
    }

    Point const& EdgeEnd(std::size_t edge) const { return PointAt(Next(edge)); }
    Box EdgeBox(std::size_t edge) const { return BoxOf(PointAt(edge), EdgeEnd(edge)); }
    Box LoopBox(std::size_t loop) const {
        Box box;
        for (auto corner = Begin(loop); corner < End(loop); ++corner)
            box.Add(PointAt(corner));
        return box;
    }

    /// Positive where the loop runs counter-clockwise on the whole.
    double SignedArea(std::size_t loop) const;

private:
    std::vector<Corner> m_corners;
    /// Where each loop starts in the list, and where the last one ends.
    std::vector<std::size_t> m_starts{0};
};

/// Positive for a polygon that runs counter-clockwise. Taken from its first corner, so that a place far from the
/// origin costs no digits.
double SignedArea(std::vector<Point> const& corners);

} // namespace qel::SectrixTools::Geometry
