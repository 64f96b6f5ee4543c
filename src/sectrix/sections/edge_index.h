#pragma once

#include <cstddef>
#include <vector>

/// \file
/// Which edges stand at a given height.

namespace qel::Sectrix {

/// Edges by the heights that they cover, for searches at heights that are known beforehand: a tree over these
/// heights, in which an edge stands at the few nodes that together cover its range.
class EdgeIndex {
public:
    /// Makes ready for searches at these heights, which must be finite.
    void Reset(std::vector<double> heights);
    /// False before the first reset: there is nothing to search then.
    bool IsInUse() const { return !m_heights.empty(); }

    /// Adds an edge that covers the heights from `bottom` to `top`, both finite.
    void Add(int edge, double bottom, double top);

    /// Calls `visit` with each edge that covers `height`, one of those given, in no order. An edge for which it
    /// returns false is taken out.
    template <class Visit>
    void ForEach(double height, Visit visit) {
        for (std::size_t node = LeafOf(height); node > 0; node /= 2) {
            auto& edges = m_nodes[node];
            for (std::size_t i = 0; i < edges.size();) {
                if (visit(edges[i])) {
                    ++i;
                } else {
                    edges[i] = edges.back();
                    edges.pop_back();
                }
            }
        }
    }

private:
    std::size_t LeafOf(double height) const;

    /// The heights of the searches, in ascending order.
    std::vector<double> m_heights;
    /// A binary tree in one list: the root at 1, the children of node n at 2n and 2n + 1, the leaf of the i-th
    /// height at the count of heights plus i.
    std::vector<std::vector<int>> m_nodes;
};

} // namespace qel::Sectrix
