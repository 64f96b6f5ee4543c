#pragma once

#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cutting/edge_index.h"
#include "sectrix/sections/cutting/scratch.h"
#include "sectrix/sections/loop.h"

#include <cstddef>
#include <vector>

/// \file
/// The merging of holes into an outline.

namespace qel::Sectrix {

/// An outline and the holes to be merged into it, one after the other in ascending order of their least x.
///
/// From the left-most vertex of a hole a ray runs to the left. Where it first meets the outline, with all holes
/// merged so far, stands the foot of a bridge: a vertex of the outline, or a new one on an edge. The outline then
/// goes over the bridge, around the hole and back. Nothing but this object changes until the caller takes the
/// result.
class HoleMerger {
public:
    using Point = Vec<2, double>;

    /// A hole, by its entry in the caller's list, its vertices and the place of the left-most of these.
    struct Hole {
        std::size_t m_entry;
        std::vector<Vertex> const* m_vertices;
        Scratch::List<Point> m_points;
        std::size_t m_leftMost;

        Point const& Head() const { return m_points[m_leftMost]; }
    };

    /// \param vertices       of the outline, with their points in the same order.
    /// \param leftMost       the left-most of these.
    /// \param holes          in the order of merging; their memory serves for all else.
    /// \param firstNewIndex  the pool index that the first new vertex will have.
    HoleMerger(std::vector<Vertex> const& vertices, Scratch::List<Point> const& points, std::size_t leftMost,
               Scratch::List<Hole> holes, int firstNewIndex);

    /// Merges the next hole; false, with nothing changed, when its ray meets nothing or there is none left.
    bool Merge();

    /// The number of holes merged so far.
    std::size_t MergedCount() const { return m_merged; }
    /// Their entries, ascending.
    Scratch::List<std::size_t> MergedEntries() const;
    /// The points of the new vertices, in the order of their making.
    Scratch::List<Point> const& Feet() const { return m_feet; }
    /// The outline as it stands.
    std::vector<Vertex> Outline() const;

private:
    /// A vertex of the outline, in a list, since splicing into an array would move what is behind.
    struct Node {
        Point m_point;
        Vertex m_vertex{-1, false};
        /// The next vertex; -1 behind the last one.
        int m_next = -1;
        /// The edge that leaves here.
        int m_edge = -1;
    };

    /// Where the bridge from a hole meets the outline.
    struct Foot {
        Point m_point;
        /// The edge that gave the foot; -1 while there is none.
        int m_edge = -1;
        /// The vertex at the foot; -1 where the foot lies on the edge between its ends.
        int m_node = -1;
    };

    Foot FindFoot(Point const& head);
    template <class Compete>
    void Meet(int edge, Point const& head, Compete compete) const;
    bool IsEarlier(int edge, int other) const;
    int Split(Foot const& foot);
    void Splice(Hole const& hole, int bridge);
    int AddNode(Point const& point, Vertex vertex);
    void AddEdge(int node);
    void FileEdge(int edge);
    void IndexEdge(int edge);
    void IndexWaitingEdges();
    int NextAround(int node) const { return At(node).m_next >= 0 ? At(node).m_next : m_first; }
    Node& At(int node) { return m_nodes[static_cast<std::size_t>(node)]; }
    Node const& At(int node) const { return m_nodes[static_cast<std::size_t>(node)]; }

    /// In the order of merging.
    Scratch::List<Hole> m_holes;
    std::size_t m_merged = 0;
    Scratch::List<Node> m_nodes;
    int m_first = 0;
    /// The node at which each edge begins; -1 once the edge has been split.
    Scratch::List<int> m_edgeStarts;
    Scratch::List<Point> m_feet;
    int m_firstNewIndex;
    /// The least x of the outline, and so of every foot.
    double m_leftMostX;
    /// The edges by their heights, where holes and edges are many; not in use otherwise.
    EdgeIndex m_index;
    /// The least x of each hole. A ray meets no edge whose ends both lie there or to the right of it, and holes
    /// only come further to the right, so that an edge waits for the first hole of which its left end lies to the
    /// left.
    Scratch::List<double> m_headXs;
    /// By hole, the first of the edges that wait for it, and by edge the next one; -1 for none.
    Scratch::List<int> m_firstWaiting, m_nextWaiting;
    /// The feet with the greatest x, of a search through the index.
    Scratch::List<Foot> m_nearest;
};

} // namespace qel::Sectrix
