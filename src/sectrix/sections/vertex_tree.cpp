#include "sectrix/sections/vertex_tree.h"
#include "sectrix/foundation/strict_arithmetic.h"

#include <algorithm>

namespace qel::Sectrix {

namespace {

/// No leaf holds more points.
std::size_t const leafSize = 16;

VertexTree::Box Around(VertexTree::Box const& a, VertexTree::Box const& b) {
    return {{std::min(a.m_min[0], b.m_min[0]), std::min(a.m_min[1], b.m_min[1])},
            {std::max(a.m_max[0], b.m_max[0]), std::max(a.m_max[1], b.m_max[1])}};
}

bool IsSame(VertexTree::Box const& a, VertexTree::Box const& b) {
    return a.m_min[0] == b.m_min[0] && a.m_min[1] == b.m_min[1] && a.m_max[0] == b.m_max[0] &&
           a.m_max[1] == b.m_max[1];
}

} // namespace

void VertexTree::Reset(Scratch::List<Point> const& points) {
    m_leaves = 1;
    while (m_leaves * leafSize < points.size())
        m_leaves *= 2;
    m_entries.clear();
    m_entries.reserve(points.size());
    for (std::size_t i = 0; i < points.size(); ++i)
        m_entries.push_back({points[i], static_cast<int>(i)});
    m_ranges.resize(m_leaves);
    m_leafOf.resize(points.size());
    m_boxes.resize(2 * m_leaves);
    Split(1, {0, points.size()});
}

/// Makes the tree below a node. The depth is that of the tree, some twenty at most.
void VertexTree::Split(std::size_t node, Leaf const& range) {
    m_boxes[node] = BoxOf(range);
    if (node >= m_leaves) {
        m_ranges[node - m_leaves] = range;
        for (std::size_t i = range.m_begin; i < range.m_end; ++i)
            m_leafOf[static_cast<std::size_t>(m_entries[i].m_number)] = node - m_leaves;
        return;
    }
    auto const& box = m_boxes[node];
    std::size_t const axis = box.m_max[0] - box.m_min[0] >= box.m_max[1] - box.m_min[1] ? 0 : 1;
    std::size_t const middle = range.m_begin + (range.m_end - range.m_begin) / 2;
    auto const at = [this](std::size_t place) { return m_entries.begin() + static_cast<std::ptrdiff_t>(place); };
    std::nth_element(at(range.m_begin), at(middle), at(range.m_end),
                     [axis](Entry const& a, Entry const& b) { return a.m_point[axis] < b.m_point[axis]; });
    Split(2 * node, {range.m_begin, middle});
    Split(2 * node + 1, {middle, range.m_end});
}

void VertexTree::Remove(int number) {
    std::size_t const leaf = m_leafOf[static_cast<std::size_t>(number)];
    auto& range = m_ranges[leaf];
    for (std::size_t i = range.m_begin; i < range.m_end; ++i)
        if (m_entries[i].m_number == number)
            m_entries[i--] = m_entries[--range.m_end];
    std::size_t node = m_leaves + leaf;
    auto box = BoxOf(range);
    while (!IsSame(box, m_boxes[node])) {
        m_boxes[node] = box;
        node /= 2;
        if (node == 0)
            return;
        box = Around(m_boxes[2 * node], m_boxes[2 * node + 1]);
    }
}

VertexTree::Box VertexTree::BoxOf(Leaf const& range) const {
    Box box;
    for (std::size_t i = range.m_begin; i < range.m_end; ++i)
        box.Widen(m_entries[i].m_point);
    return box;
}

} // namespace qel::Sectrix
