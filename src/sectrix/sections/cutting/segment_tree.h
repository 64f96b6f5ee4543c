#pragma once

#include <cstddef>
#include <vector>

/// \file
/// Which edges stand at a given height.

namespace qel::Sectrix {

/// A segment tree over the heights of all searches, which are known beforehand: a binary tree whose leaves are
/// these heights in ascending order. The heights that an edge covers are a run of leaves, and the edge is kept at
/// the few nodes whose subtrees together make up that run. So the edges at a height are those on the way from its
/// leaf to the root.
///
/// At each node the edges are in ascending order of their reach, so that a search that has found something leaves
/// out all that cannot do better.
class SegmentTree {
public:
    struct Edge {
        /// No foot on the edge has a greater x.
        double m_reach;
        /// What the user knows the edge by.
        int m_edge;
    };

    /// Makes ready for searches at these heights, which must be finite; there must be one.
    void Reset(std::vector<double> heights);
    /// False before the first reset: there is nothing to search then.
    bool IsInUse() const { return !m_heights.empty(); }

    /// Adds an edge that covers the heights from `bottom` to `top`, both finite, and whose reach is a number.
    void Add(Edge const& edge, double bottom, double top);
    /// Brings the edges in order after a first series of additions. Later ones keep it.
    void Sort();

    /// Calls `visit` with each edge that covers `height`, one of those given, and reaches at least as far as
    /// `least`, which may grow meanwhile. An edge for which it returns false is taken out.
    template <class Visit>
    void ForEach(double height, double const& least, Visit visit) {
        for (std::size_t node = LeafOf(height); node > 0; node /= 2) {
            auto& edges = m_nodes[node];
            for (auto i = edges.size(); i-- > 0 && edges[i].m_reach >= least;)
                if (!visit(edges[i].m_edge))
                    edges.erase(edges.begin() + static_cast<std::ptrdiff_t>(i));
        }
    }

private:
    std::size_t LeafOf(double height) const;
    void AddTo(std::vector<Edge>& edges, Edge const& edge) const;

    /// The heights of the searches, in ascending order, each once.
    std::vector<double> m_heights;
    /// The tree in one list: the root at 1, the children of node n at 2n and 2n + 1, the leaf of the i-th height at
    /// the count of heights plus i.
    std::vector<std::vector<Edge>> m_nodes;
    bool m_isSorted = false;
};

} // namespace qel::Sectrix
