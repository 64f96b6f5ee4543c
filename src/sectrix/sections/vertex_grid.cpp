#include "sectrix/sections/vertex_grid.h"
#include "sectrix/foundation/strict_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <limits>
#include <utility>

namespace qel::Sectrix {

namespace {

/// The number of the slice that a coordinate falls into; what lies outside counts for the nearest slice. Never
/// falls as the coordinate grows, so that a range of coordinates is covered by a range of slices.
std::size_t SliceAt(double coordinate, double origin, double density, std::size_t count) {
    double const slice = (coordinate - origin) * density;
    if (!(slice > 0.0))
        return 0;
    return slice < static_cast<double>(count) ? static_cast<std::size_t>(slice) : count - 1;
}

} // namespace

void VertexGrid::Reset(std::vector<Entry> const& entries) {
    m_count = entries.size();
    BBox<2, double> box;
    for (auto const& entry : entries)
        box.Widen(entry.m_point);
    // Square cells, about as many as points; no more slices than points along an axis, however flat the box is.
    double const width = box.m_max[0] - box.m_min[0];
    double const height = box.m_max[1] - box.m_min[1];
    double const count = static_cast<double>(m_count);
    double const size = std::max(std::sqrt(width / count * height), std::max(width, height) / count);
    m_origin = box.m_min;
    m_density = {size > 0.0 ? 1.0 / size : 0.0, size > 0.0 ? 1.0 / size : 0.0};
    m_columns = SliceAt(box.m_max[0], m_origin[0], m_density[0], m_count) + 1;
    m_rows = SliceAt(box.m_max[1], m_origin[1], m_density[1], m_count) + 1;

    // Count the points of each cell, then put each in its place.
    m_end.assign(m_columns * m_rows, 0);
    auto const cellOf = [this](Entry const& entry) { return CellAt(RowAt(entry.m_point[1]), entry.m_point[0]); };
    for (auto const& entry : entries)
        ++m_end[cellOf(entry)];
    m_begin.resize(m_end.size());
    std::size_t begin = 0;
    for (std::size_t cell = 0; cell < m_end.size(); ++cell) {
        m_begin[cell] = begin;
        begin += std::exchange(m_end[cell], begin);
    }
    m_entries.resize(m_count);
    for (auto const& entry : entries)
        m_entries[m_end[cellOf(entry)]++] = entry;
}

void VertexGrid::FindBorders(std::vector<Vec<2, double>> const& corners, double room) {
    BBox<2, double> box;
    for (auto const& corner : corners)
        box.Widen(corner);
    m_bottom = box.m_min[1] - room;
    m_top = box.m_max[1] + room;
    m_bottomRow = RowAt(m_bottom);
    m_topRow = RowAt(m_top);
    // In a few rows the box is as good as the polygon.
    bool const isLow = m_topRow - m_bottomRow < 3;
    auto const infinity = std::numeric_limits<double>::infinity();
    m_borders.assign(m_topRow - m_bottomRow + 1,
                     isLow ? Border{box.m_min[0] - room, box.m_max[0] + room} : Border{infinity, -infinity});
    if (isLow)
        return;
    for (std::size_t i = 0; i < corners.size(); ++i)
        Enclose(corners[i], corners[i + 1 < corners.size() ? i + 1 : 0], room);
}

/// Moves the borders of the rows that an edge of the polygon meets, so that they enclose its part in each row.
void VertexGrid::Enclose(Vec<2, double> const& from, Vec<2, double> const& to, double room) {
    auto const& low = from[1] <= to[1] ? from : to;
    auto const& high = from[1] <= to[1] ? to : from;
    double const left = std::min(low[0], high[0]);
    double const right = std::max(low[0], high[0]);
    double const slope = (high[0] - low[0]) / (high[1] - low[1]); // not looked at on a horizontal edge
    auto const xAt = [&](double y) {
        if (y <= low[1])
            return low[0];
        return y < high[1] ? std::clamp(low[0] + (y - low[1]) * slope, left, right) : high[0];
    };
    std::size_t const topRow = RowAt(high[1] + room);
    for (std::size_t row = RowAt(low[1] - room); row <= topRow; ++row) {
        auto& border = m_borders[row - m_bottomRow];
        // The outermost rows hold what lies outside the grid.
        double const bottom = m_origin[1] + static_cast<double>(row) / m_density[1] - room;
        double const x1 = row > 0 ? xAt(bottom) : low[0];
        double const x2 = row + 1 < m_rows ? xAt(bottom + 1.0 / m_density[1] + 2 * room) : high[0];
        border.m_left = std::min(border.m_left, std::min(x1, x2) - room);
        border.m_right = std::max(border.m_right, std::max(x1, x2) + room);
    }
}

std::size_t VertexGrid::RowAt(double y) const {
    return SliceAt(y, m_origin[1], m_density[1], m_rows);
}

std::size_t VertexGrid::CellAt(std::size_t row, double x) const {
    return row * m_columns + SliceAt(x, m_origin[0], m_density[0], m_columns);
}

} // namespace qel::Sectrix
