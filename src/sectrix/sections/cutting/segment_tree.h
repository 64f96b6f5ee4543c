#pragma once

#include <algorithm>
#include <cassert>
#include <cmath>
#include <cstddef>
#include <utility>
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
    void Reset(std::vector<double> heights) {
        assert(!heights.empty());
        assert(std::all_of(heights.begin(), heights.end(), [](double height) { return std::isfinite(height); }));
        m_heights = std::move(heights);
        std::sort(m_heights.begin(), m_heights.end());
        m_heights.erase(std::unique(m_heights.begin(), m_heights.end()), m_heights.end());
        m_nodes.assign(2 * m_heights.size(), {});
        m_isSorted = false;
    }

    /// False before the first reset: there is nothing to search then.
    bool IsInUse() const { return !m_heights.empty(); }

    /// Adds an edge that covers the heights from `bottom` to `top`, both finite, and whose reach is a number.
    void Add(Edge const& edge, double bottom, double top) {
        assert(std::isfinite(bottom) && std::isfinite(top) && !std::isnan(edge.m_reach));
        auto const first = std::lower_bound(m_heights.begin(), m_heights.end(), bottom);
        auto const last = std::upper_bound(first, m_heights.end(), top);
        // Up the tree from both ends of the run. A left end that is a right child is not all of its parent, so that
        // it takes the edge itself and the run goes on beside it; a right end likewise.
        auto left = static_cast<std::size_t>(first - m_heights.begin()) + m_heights.size();
        auto right = static_cast<std::size_t>(last - m_heights.begin()) + m_heights.size();
        for (; left < right; left /= 2, right /= 2) {
            if (left % 2 == 1)
                AddTo(m_nodes[left++], edge);
            if (right % 2 == 1)
                AddTo(m_nodes[--right], edge);
        }
    }

    /// Brings the edges in order after a first series of additions. Later ones keep it.
    void Sort() {
        for (auto& edges : m_nodes)
            std::sort(edges.begin(), edges.end(), ReachesLess);
        m_isSorted = true;
    }

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
    static bool ReachesLess(Edge const& a, Edge const& b) { return a.m_reach < b.m_reach; }

    void AddTo(std::vector<Edge>& edges, Edge const& edge) const {
        // A search goes on to the right of what has been added, so that the edge mostly goes near the end.
        auto const at = m_isSorted ? std::upper_bound(edges.begin(), edges.end(), edge, ReachesLess) : edges.end();
        edges.insert(at, edge);
    }

    std::size_t LeafOf(double height) const {
        auto const found = std::lower_bound(m_heights.begin(), m_heights.end(), height);
        assert(found != m_heights.end() && *found == height);
        return static_cast<std::size_t>(found - m_heights.begin()) + m_heights.size();
    }

    /// The heights of the searches, in ascending order, each once.
    std::vector<double> m_heights;
    /// The tree in one list: the root at 1, the children of node n at 2n and 2n + 1, the leaf of the i-th height at
    /// the count of heights plus i.
    std::vector<std::vector<Edge>> m_nodes;
    bool m_isSorted = false;
};

} // namespace qel::Sectrix
