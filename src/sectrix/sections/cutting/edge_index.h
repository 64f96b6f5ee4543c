#pragma once

#include <cstddef>
#include <vector>

/// \file
/// Which edges stand at a given height.

namespace qel::Sectrix {

/// Edges by the heights that they cover, for searches at heights that are known beforehand: a tree over these
/// heights, in which an edge stands at the few nodes that together cover its range. At a node the edges stand by
/// how far they reach, so that a search that has found something leaves out all that cannot do better.
class EdgeIndex {
public:
    struct Edge {
        double m_reach;
        int m_number;
    };

    /// Makes ready for searches at these heights, which must be finite.
    void Reset(std::vector<double> heights);
    /// False before the first reset: there is nothing to search then.
    bool IsInUse() const { return !m_heights.empty(); }

    /// Adds an edge that covers the heights from `bottom` to `top`, both finite, and whose reach is a number.
    void Add(Edge const& edge, double bottom, double top);
    /// Brings the edges in order after a first series of additions. Later ones keep it.
    void Sort();

    /// Calls `visit` with the number of each edge that covers `height`, one of those given, and reaches at least
    /// as far as `least`, which may grow meanwhile. An edge for which it returns false is taken out.
    template <class Visit>
    void ForEach(double height, double const& least, Visit visit) {
        for (std::size_t node = LeafOf(height); node > 0; node /= 2) {
            auto& edges = m_nodes[node];
            for (auto i = edges.size(); i-- > 0 && edges[i].m_reach >= least;)
                if (!visit(edges[i].m_number))
                    edges.erase(edges.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }

private:
    std::size_t LeafOf(double height) const;
    void AddTo(std::vector<Edge>& edges, Edge const& edge) const;

    /// The heights of the searches, in ascending order.
    std::vector<double> m_heights;
    /// A binary tree in one list: the root at 1, the children of node n at 2n and 2n + 1, the leaf of the i-th
    /// height at the count of heights plus i. At each node the edges in ascending order of their reach, once that
    /// is kept.
    std::vector<std::vector<Edge>> m_nodes;
    bool m_isSorted = false;
};

} // namespace qel::Sectrix
