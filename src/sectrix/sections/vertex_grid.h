#pragma once

#include "sectrix/foundation/value_types.h"

#include <cstddef>
#include <vector>

/// \file
/// Which of many points may lie in a convex polygon.

namespace qel::Sectrix {

/// Points in the cells of a grid. A polygon is met by the rows at its height, and in each by the cells between its
/// borders there, so that a long and thin one that leans meets few.
class VertexGrid {
public:
    struct Entry {
        Vec<2, double> m_point;
        int m_number;
    };

    /// Holds these points, which must be finite, in place of all others.
    void Reset(std::vector<Entry> const& entries);
    /// Holds nothing.
    void Clear() { m_count = 0; }
    /// The number of points held at the last reset.
    std::size_t Count() const { return m_count; }

    /// Puts the numbers of all points that lie in the convex polygon, and of some that lie near it, into `numbers`
    /// in place of what that held, in no order. False, with nothing of use there, when there are more than `limit`.
    /// \param corners  of the polygon, finite, in order.
    /// \param room     how far outside the polygon, along each axis, a point may lie and still be found.
    /// \param isHeld   called with a number; false takes the point out of the grid.
    template <class IsHeld>
    bool Collect(std::vector<Vec<2, double>> const& corners, double room, std::size_t limit, IsHeld isHeld,
                 std::vector<int>& numbers) {
        FindBorders(corners, room);
        numbers.clear();
        for (std::size_t row = m_bottomRow; row <= m_topRow; ++row) {
            auto const [left, right] = m_borders[row - m_bottomRow];
            if (!(left <= right))
                continue;
            std::size_t const lastCell = CellAt(row, right);
            for (std::size_t cell = CellAt(row, left); cell <= lastCell; ++cell)
                for (std::size_t e = m_begin[cell]; e < m_end[cell];) {
                    auto const& [point, number] = m_entries[e];
                    if (!isHeld(number)) {
                        m_entries[e] = m_entries[--m_end[cell]];
                        continue;
                    }
                    if (point[0] >= left && point[0] <= right && point[1] >= m_bottom && point[1] <= m_top) {
                        if (numbers.size() == limit)
                            return false;
                        numbers.push_back(number);
                    }
                    ++e;
                }
        }
        return true;
    }

private:
    struct Border {
        double m_left, m_right;
    };

    void FindBorders(std::vector<Vec<2, double>> const& corners, double room);
    void Enclose(Vec<2, double> const& from, Vec<2, double> const& to, double room);
    std::size_t RowAt(double y) const;
    std::size_t CellAt(std::size_t row, double x) const;

    std::size_t m_count = 0;
    std::size_t m_columns = 1, m_rows = 1;
    Vec<2, double> m_origin;
    /// Cells a unit of length, along each axis.
    Vec<2, double> m_density;
    /// The entries, cell by cell, from left to right and row after row upward.
    std::vector<Entry> m_entries;
    /// Where the entries of each cell begin, and where those that are still held end.
    std::vector<std::size_t> m_begin, m_end;

    /// What the present search looks at: the height of the polygon, its rows, and its borders in each of them.
    double m_bottom = 0.0, m_top = 0.0;
    std::size_t m_bottomRow = 0, m_topRow = 0;
    std::vector<Border> m_borders;
};

} // namespace qel::Sectrix
