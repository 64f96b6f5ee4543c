#include "sectrix/sections/cutting/segment_tree.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <utility>

namespace qel::Sectrix {

namespace {

bool ReachesLess(SegmentTree::Edge const& a, SegmentTree::Edge const& b) {
    return a.m_reach < b.m_reach;
}

} // namespace

void SegmentTree::Reset(std::vector<double> heights) {
    assert(!heights.empty());
    assert(std::all_of(heights.begin(), heights.end(), [](double height) { return std::isfinite(height); }));
    m_heights = std::move(heights);
    std::sort(m_heights.begin(), m_heights.end());
    m_heights.erase(std::unique(m_heights.begin(), m_heights.end()), m_heights.end());
    m_nodes.assign(2 * m_heights.size(), {});
    m_isSorted = false;
}

void SegmentTree::Add(Edge const& edge, double bottom, double top) {
    assert(std::isfinite(bottom) && std::isfinite(top) && !std::isnan(edge.m_reach));
    auto const first = std::lower_bound(m_heights.begin(), m_heights.end(), bottom);
    auto const last = std::upper_bound(first, m_heights.end(), top);
    // Up the tree from both ends of the run. A left end that is a right child is not all of its parent, so that it
    // takes the edge itself and the run goes on beside it; a right end likewise.
    auto left = static_cast<std::size_t>(first - m_heights.begin()) + m_heights.size();
    auto right = static_cast<std::size_t>(last - m_heights.begin()) + m_heights.size();
    for (; left < right; left /= 2, right /= 2) {
        if (left % 2 == 1)
            AddTo(m_nodes[left++], edge);
        if (right % 2 == 1)
            AddTo(m_nodes[--right], edge);
    }
}

void SegmentTree::AddTo(std::vector<Edge>& edges, Edge const& edge) const {
    // A search goes on to the right of what has been added, so that the edge mostly goes near the end.
    auto const at = m_isSorted ? std::upper_bound(edges.begin(), edges.end(), edge, ReachesLess) : edges.end();
    edges.insert(at, edge);
}

void SegmentTree::Sort() {
    for (auto& edges : m_nodes)
        std::sort(edges.begin(), edges.end(), ReachesLess);
    m_isSorted = true;
}

std::size_t SegmentTree::LeafOf(double height) const {
    auto const found = std::lower_bound(m_heights.begin(), m_heights.end(), height);
    assert(found != m_heights.end() && *found == height);
    return static_cast<std::size_t>(found - m_heights.begin()) + m_heights.size();
}

} // namespace qel::Sectrix
