#include "sectrix/sections/edge_index.h"

#include <algorithm>

namespace qel::Sectrix {

void EdgeIndex::Reset(std::vector<double> heights) {
    m_heights = std::move(heights);
    std::sort(m_heights.begin(), m_heights.end());
    m_heights.erase(std::unique(m_heights.begin(), m_heights.end()), m_heights.end());
    m_nodes.assign(2 * m_heights.size(), {});
}

void EdgeIndex::Add(int edge, double bottom, double top) {
    auto const first = std::lower_bound(m_heights.begin(), m_heights.end(), bottom);
    auto const last = std::upper_bound(first, m_heights.end(), top);
    // Up the tree from both ends of the range: a node that is not wholly covered by its parent's range stands for
    // itself.
    auto left = static_cast<std::size_t>(first - m_heights.begin()) + m_heights.size();
    auto right = static_cast<std::size_t>(last - m_heights.begin()) + m_heights.size();
    for (; left < right; left /= 2, right /= 2) {
        if (left % 2 == 1)
            m_nodes[left++].push_back(edge);
        if (right % 2 == 1)
            m_nodes[--right].push_back(edge);
    }
}

std::size_t EdgeIndex::LeafOf(double height) const {
    auto const found = std::lower_bound(m_heights.begin(), m_heights.end(), height);
    return static_cast<std::size_t>(found - m_heights.begin()) + m_heights.size();
}

} // namespace qel::Sectrix
