#include "sectrix/sections/cutting/edge_index.h"

#include <algorithm>
#include <utility>

namespace qel::Sectrix {

namespace {

bool IsNearer(EdgeIndex::Edge const& a, EdgeIndex::Edge const& b) {
    return a.m_reach < b.m_reach;
}

} // namespace

void EdgeIndex::Reset(std::vector<double> heights) {
    m_heights = std::move(heights);
    std::sort(m_heights.begin(), m_heights.end());
    m_heights.erase(std::unique(m_heights.begin(), m_heights.end()), m_heights.end());
    m_nodes.assign(2 * m_heights.size(), {});
    m_isSorted = false;
}

void EdgeIndex::Add(Edge const& edge, double bottom, double top) {
    auto const first = std::lower_bound(m_heights.begin(), m_heights.end(), bottom);
    auto const last = std::upper_bound(first, m_heights.end(), top);
    // Up the tree from both ends of the range: a node that is not wholly covered by its parent's range stands for
    // itself.
    auto left = static_cast<std::size_t>(first - m_heights.begin()) + m_heights.size();
    auto right = static_cast<std::size_t>(last - m_heights.begin()) + m_heights.size();
    for (; left < right; left /= 2, right /= 2) {
        if (left % 2 == 1)
            AddTo(m_nodes[left++], edge);
        if (right % 2 == 1)
            AddTo(m_nodes[--right], edge);
    }
}

void EdgeIndex::AddTo(std::vector<Edge>& edges, Edge const& edge) const {
    // A search goes on to the right of what has been added, so that the place is mostly near the end.
    auto const place = m_isSorted ? std::upper_bound(edges.begin(), edges.end(), edge, IsNearer) : edges.end();
    edges.insert(place, edge);
}

void EdgeIndex::Sort() {
    for (auto& edges : m_nodes)
        std::sort(edges.begin(), edges.end(), IsNearer);
    m_isSorted = true;
}

std::size_t EdgeIndex::LeafOf(double height) const {
    auto const found = std::lower_bound(m_heights.begin(), m_heights.end(), height);
    return static_cast<std::size_t>(found - m_heights.begin()) + m_heights.size();
}

} // namespace qel::Sectrix
