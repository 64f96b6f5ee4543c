#include "sectrix/foundation/detail/reserve_more.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix/sections/cross_section.h"
#include "sectrix/sections/cutting/loop_points.h"
#include "sectrix/sections/cutting/segment_tree.h"

#include <algorithm>
#include <cassert>
#include <cmath>
#include <limits>
#include <utility>

// Hole removal: each hole is joined to the outline by a bridge, so that one polygon is left to cut. The bridge is
// that of David Eberly, "Triangulation by Ear Clipping" (2002), mirrored; but a foot between the ends of an edge
// becomes a new vertex, where the bridge of that text goes to one that is visible from the hole.

namespace qel::Sectrix {

namespace {

/// On the product of the height differences between the ends of an edge and a ray.
double const kProductTolerance = 1e-6;

/// Two ends on one side of a ray count as off it where both are further away than this, the root of the tolerance
/// on the product, with some room for rounding.
double const kHeightRoom = 1.01e-3;

/// From this many pairs of a hole and an edge on, the edges are indexed.
std::size_t const kIndexThreshold = 40000;

/// The entries of the working list that are holes with a left-most vertex, in the order of merging, no more than
/// `limit`: by their least x, of equal ones the first in the list first.
Scratch::List<std::size_t> OrderHoles(std::vector<Loop>& loops, CSPositions const& pool, std::size_t limit,
                                      Scratch& scratch) {
    Scratch::List<std::pair<double, std::size_t>> heads(scratch);
    heads.reserve(loops.size());
    for (std::size_t entry = 1; entry < loops.size(); ++entry) {
        int const place = loops[entry].LeftMostVertex();
        if (place < 0)
            continue;
        auto const& vertex = loops[entry].Vertices()[static_cast<std::size_t>(place)];
        bool found = false;
        auto const& position = pool.GetPosition(static_cast<std::uint64_t>(vertex.Index()), found);
        if (found && position.Position()[0] < std::numeric_limits<double>::max())
            heads.emplace_back(position.Position()[0], entry);
    }
    std::size_t const count = std::min(limit, heads.size());
    std::partial_sort(heads.begin(), heads.begin() + static_cast<std::ptrdiff_t>(count), heads.end());
    Scratch::List<std::size_t> order(scratch);
    order.reserve(count);
    for (std::size_t i = 0; i < count; ++i)
        order.push_back(heads[i].second);
    return order;
}

} // namespace

/// An outline and the holes to be merged into it, one after the other in ascending order of their least x.
///
/// From the left-most vertex of a hole, its head, a ray runs to the left. Where it first meets the outline, with
/// all holes merged so far, stands the foot of the bridge: a vertex of the outline, or a new one on an edge. The
/// outline then goes over the bridge, around the hole and back.
///
/// The outline is a linked list of nodes, one a vertex, in an array that only grows. An edge is known by a number
/// of its own: when a hole is spliced in at a vertex, the edge that leaves there is the same as before but begins
/// at another node, the second occurrence of that vertex.
///
/// Nothing but this object changes until the caller takes the result.
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

    /// \param vertices       of the outline, with their points in the same order; not empty.
    /// \param leftMost       the left-most of these.
    /// \param holes          in the order of merging; their memory serves for all else.
    /// \param firstNewIndex  the pool index that the first new vertex will have.
    HoleMerger(std::vector<Vertex> const& vertices, Scratch::List<Point> const& points, std::size_t leftMost,
               Scratch::List<Hole> holes, int firstNewIndex)
        : m_holes(std::move(holes)), m_nodes(m_holes.get_allocator()), m_edgeStarts(m_holes.get_allocator()),
          m_feet(m_holes.get_allocator()), m_firstNewIndex(firstNewIndex), m_leftMostX(points[leftMost][0]),
          m_headXs(m_holes.get_allocator()), m_firstWaiting(m_holes.get_allocator()),
          m_nextWaiting(m_holes.get_allocator()) {
        assert(points.size() == vertices.size() && leftMost < points.size());
        std::size_t total = vertices.size();
        for (auto const& hole : m_holes)
            total += hole.m_points.size() + 3; // the hole, its head and the foot again, and a new foot
        if (m_holes.size() * total > kIndexThreshold && IsFinite(points))
            PrepareIndex(total);

        m_nodes.reserve(total);
        m_edgeStarts.reserve(total + m_holes.size());
        for (std::size_t i = 0; i < vertices.size(); ++i)
            AddNode(points[i], vertices[i]);
        int const count = static_cast<int>(vertices.size());
        for (int node = 0; node < count; ++node)
            At(node).m_next = node + 1 < count ? node + 1 : -1;
        for (int node = 0; node < count; ++node)
            AddEdge(node);
        m_index.Sort();
    }

    /// Merges the next hole; false, with nothing changed, when its ray meets nothing or there is none left.
    bool MergeNext() {
        if (m_merged == m_holes.size())
            return false;
        auto const& hole = m_holes[m_merged];
        auto const foot = FindFoot(hole.Head());
        if (foot.m_edge < 0)
            return false;
        int const bridge = foot.m_node >= 0 ? foot.m_node : Split(foot);
        Splice(hole, bridge);
        ++m_merged;
        return true;
    }

    /// The number of holes merged so far.
    std::size_t MergedCount() const { return m_merged; }
    /// Their entries, ascending.
    Scratch::List<std::size_t> MergedEntries() const {
        Scratch::List<std::size_t> entries(m_holes.get_allocator());
        entries.reserve(m_merged);
        for (std::size_t i = 0; i < m_merged; ++i)
            entries.push_back(m_holes[i].m_entry);
        std::sort(entries.begin(), entries.end());
        return entries;
    }

    /// The points of the new vertices, in the order of their making.
    Scratch::List<Point> const& Feet() const { return m_feet; }
    /// The outline as it stands.
    std::vector<Vertex> Outline() const {
        std::vector<Vertex> outline;
        outline.reserve(m_nodes.size());
        for (int node = m_first; node >= 0; node = At(node).m_next)
            outline.push_back(At(node).m_vertex);
        return outline;
    }

private:
    struct Node {
        Point m_point;
        Vertex m_vertex{-1, false};
        /// The next node; -1 behind the last one.
        int m_next = -1;
        /// The edge that leaves here.
        int m_edge = -1;
    };

    /// Where the bridge from a hole meets the outline.
    struct Foot {
        Point m_point;
        /// The edge that gave the foot; -1 while there is none.
        int m_edge = -1;
        /// The node at the foot; -1 where the foot lies on the edge between its ends.
        int m_node = -1;
    };

    bool IsFinite(Scratch::List<Point> const& outline) const {
        auto const areFinite = [](Scratch::List<Point> const& points) {
            return std::all_of(points.begin(), points.end(), [](Point const& point) {
                return std::isfinite(point[0]) && std::isfinite(point[1]);
            });
        };
        return areFinite(outline) && std::all_of(m_holes.begin(), m_holes.end(),
                                                 [&](Hole const& hole) { return areFinite(hole.m_points); });
    }

    /// \param total  the number of vertices that there may be in the end.
    void PrepareIndex(std::size_t total) {
        std::vector<double> heights;
        for (auto const& hole : m_holes) {
            heights.push_back(hole.Head()[1]);
            m_headXs.push_back(hole.Head()[0]);
        }
        m_index.Reset(std::move(heights));
        m_firstWaiting.assign(m_holes.size(), -1);
        m_nextWaiting.reserve(total + m_holes.size());
    }

    /// The foot with the greatest x; of several, that on the earliest edge.
    Foot FindFoot(Point const& head) {
        Foot best;
        best.m_point = {m_leftMostX - 1.0, head[1]}; // every point of the outline is nearer
        if (!m_index.IsInUse()) {
            for (int node = m_first; node >= 0; node = At(node).m_next)
                Meet(At(node).m_edge, head, [&best](Foot const& foot) {
                    if (foot.m_point[0] > best.m_point[0])
                        best = foot;
                });
            return best;
        }
        IndexWaitingEdges();
        m_index.ForEach(head[1], best.m_point[0], [&](int edge) {
            if (m_edgeStarts[static_cast<std::size_t>(edge)] < 0)
                return false;
            Meet(edge, head, [&](Foot const& foot) {
                // Edges come in any order. Beyond 1e16 the point that the search begins with, which has no edge,
                // may be level with the left-most vertex.
                bool const isLevel =
                    foot.m_point[0] == best.m_point[0] && best.m_edge >= 0 && foot.m_edge != best.m_edge;
                if (foot.m_point[0] > best.m_point[0] || (isLevel && IsEarlier(foot.m_edge, best.m_edge)))
                    best = foot;
            });
            return true;
        });
        return best;
    }

    /// Lets an edge compete for the foot of the ray from `head`.
    template <class Compete>
    void Meet(int edge, Point const& head, Compete compete) const {
        int const start = m_edgeStarts[static_cast<std::size_t>(edge)];
        int const end = NextAround(start);
        auto const& a = At(start).m_point;
        auto const& b = At(end).m_point;
        if (!(a[0] < head[0]) && !(b[0] < head[0]))
            return;
        double const product = (b[1] - head[1]) * (a[1] - head[1]);
        if (product * product > kProductTolerance * kProductTolerance) {
            if (!(product < -kProductTolerance))
                return; // both ends on one side of the ray
            double const x = (head[1] - a[1]) * (b[0] - a[0]) / (b[1] - a[1]) + a[0];
            if (x < head[0])
                compete(Foot{{x, head[1]}, edge, -1});
        } else {
            // An end lies at the height of the ray. Both compete, without a look at which one it is.
            compete(Foot{a, edge, start});
            compete(Foot{b, edge, end});
        }
    }

    /// True when `edge` comes before `other` in the outline. Walks from both at once, since edges that meet one
    /// foot mostly lie together.
    bool IsEarlier(int edge, int other) const {
        int const mine = m_edgeStarts[static_cast<std::size_t>(edge)];
        int const theirs = m_edgeStarts[static_cast<std::size_t>(other)];
        int fromMine = mine;
        int fromTheirs = theirs;
        for (;;) {
            fromMine = At(fromMine).m_next;
            fromTheirs = At(fromTheirs).m_next;
            if (fromMine == theirs || fromTheirs < 0)
                return true;
            if (fromTheirs == mine || fromMine < 0)
                return false;
        }
    }

    /// Puts a new vertex where the foot lies, and returns it.
    int Split(Foot const& foot) {
        int const before = m_edgeStarts[static_cast<std::size_t>(foot.m_edge)];
        int const node = AddNode(foot.m_point, Vertex(m_firstNewIndex + static_cast<int>(m_feet.size()), true));
        m_feet.push_back(foot.m_point);
        m_leftMostX = std::min(m_leftMostX, foot.m_point[0]);
        m_edgeStarts[static_cast<std::size_t>(foot.m_edge)] = -1;
        if (At(before).m_next < 0) { // on the closing edge, a new vertex comes first
            At(node).m_next = m_first;
            m_first = node;
        } else {
            At(node).m_next = At(before).m_next;
            At(before).m_next = node;
        }
        AddEdge(before);
        AddEdge(node);
        return node;
    }

    /// Puts the hole, its head once more and the foot once more behind the foot.
    void Splice(Hole const& hole, int bridge) {
        std::size_t const count = hole.m_vertices->size();
        int last = bridge;
        int const behind = At(bridge).m_next;
        int const oldEdge = At(bridge).m_edge;
        auto const append = [&](Point const& point, Vertex const& vertex) {
            int const node = AddNode(point, vertex);
            At(last).m_next = node;
            last = node;
        };
        for (std::size_t i = 0; i <= count; ++i) {
            std::size_t const place = (hole.m_leftMost + i) % count;
            append(hole.m_points[place], (*hole.m_vertices)[place]);
        }
        At(At(bridge).m_next).m_vertex.SetExterior(false);
        append(At(bridge).m_point, Vertex(At(bridge).m_vertex.Index(), false));
        At(last).m_next = behind;
        m_leftMostX = std::min(m_leftMostX, hole.Head()[0]);

        // The edge that left the foot leaves its second occurrence now, and is the same.
        m_edgeStarts[static_cast<std::size_t>(oldEdge)] = last;
        At(last).m_edge = oldEdge;
        for (int node = bridge; node != last; node = At(node).m_next)
            AddEdge(node);
    }

    int AddNode(Point const& point, Vertex vertex) {
        auto& node = m_nodes.emplace_back();
        node.m_point = point;
        node.m_vertex = vertex;
        return static_cast<int>(m_nodes.size()) - 1;
    }

    /// Makes the edge that leaves a node, which must be linked to the next one. Where there is an index, the edge
    /// goes into it, or waits for the first hole whose ray may meet it; without such a hole it is never indexed.
    void AddEdge(int node) {
        int const edge = static_cast<int>(m_edgeStarts.size());
        At(node).m_edge = edge;
        m_edgeStarts.push_back(node);
        if (!m_index.IsInUse())
            return;
        double const leftX = std::min(At(node).m_point[0], At(NextAround(node)).m_point[0]);
        auto const hole =
            static_cast<std::size_t>(std::upper_bound(m_headXs.begin(), m_headXs.end(), leftX) - m_headXs.begin());
        m_nextWaiting.push_back(-1);
        if (hole <= m_merged)
            IndexEdge(edge);
        else if (hole < m_headXs.size())
            m_nextWaiting.back() = std::exchange(m_firstWaiting[hole], edge);
    }

    void IndexEdge(int edge) {
        int const node = m_edgeStarts[static_cast<std::size_t>(edge)];
        auto const& a = At(node).m_point;
        auto const& b = At(NextAround(node)).m_point;
        // A foot lies no further to the right than an end, but for some eight roundings. Where the product that
        // gives it is subnormal, that is off by up to half the least double, 2.5e-324, whatever its size; the
        // quotient, of ends at least 2e-3 apart in height, by 1.3e-321.
        double const reach = std::max(a[0], b[0]) + 2e-15 * (std::abs(a[0]) + std::abs(b[0])) + 1e-320;
        m_index.Add({reach, edge}, std::min(a[1], b[1]) - kHeightRoom, std::max(a[1], b[1]) + kHeightRoom);
    }

    /// Puts into the index what has waited for the hole that is to be merged, but for edges that have been split.
    void IndexWaitingEdges() {
        for (int edge = std::exchange(m_firstWaiting[m_merged], -1); edge >= 0;
             edge = m_nextWaiting[static_cast<std::size_t>(edge)])
            if (m_edgeStarts[static_cast<std::size_t>(edge)] >= 0)
                IndexEdge(edge);
    }

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
    /// The edges by their heights, where holes and edges are many; not in use otherwise. Each edge that a ray to
    /// come may meet is in here, or waits, and so may some that have been split.
    SegmentTree m_index;
    /// The least x of each hole, ascending.
    Scratch::List<double> m_headXs;
    /// A ray meets no edge whose ends both lie at its head's x or to the right of it. So an edge is not indexed
    /// before it is the turn of the first hole whose head lies to the right of the edge's left end: it waits. By
    /// hole, the first of the edges that wait for it, and by edge the next one; -1 for none.
    Scratch::List<int> m_firstWaiting, m_nextWaiting;
};

bool CrossSection::RemoveHole() const {
    return MergeHoles(1) > 0;
}

void CrossSection::RemoveHoles() const {
    // All holes at once give what single steps give, unless something in the list changes its meaning from one step
    // to the next. There are two such things. A step drops the left-most vertices that loops remember, so that one
    // which was worked out before its positions moved counts in the first step only. And an index beyond the pool
    // becomes valid when a foot is added.
    bool const isSettled = std::all_of(m_convexLoops.begin(), m_convexLoops.end(), [this](Loop const& loop) {
        return loop.m_positions == m_positions && (loop.m_leftMost < 0 || loop.m_leftMost == loop.FindLeftMost()) &&
               std::all_of(loop.m_vertices.begin(), loop.m_vertices.end(),
                           [this](Vertex const& vertex) { return m_positions->Find(vertex.Index()) != nullptr; });
    });
    if (isSettled)
        MergeHoles(m_convexLoops.size());
    // Where holes are left, there is one more step, which merges nothing. After it all loops remember their
    // left-most vertices.
    while (m_convexLoops.size() > 1 && RemoveHole()) {
    }
}

/// Merges up to `limit` holes of the working list into the outline, and returns how many.
std::size_t CrossSection::MergeHoles(std::size_t limit) const {
    Scratch scratch;
    auto const order = OrderHoles(m_convexLoops, *m_positions, limit, scratch);
    int const leftMost = order.empty() ? -1 : m_convexLoops[0].LeftMostVertex();
    if (leftMost < 0)
        return 0;
    auto const& outline = m_convexLoops[0].m_vertices;
    Scratch::List<Vec<2, double>> points(scratch);
    if (!ReadPoints(outline, *m_positions, points))
        return 0;

    Scratch::List<HoleMerger::Hole> holes(scratch);
    holes.reserve(order.size());
    for (auto const entry : order) {
        auto& loop = m_convexLoops[entry];
        holes.push_back({entry, &loop.m_vertices, Scratch::List<Vec<2, double>>(scratch),
                         static_cast<std::size_t>(loop.LeftMostVertex())});
        ReadPoints(loop.m_vertices, *m_positions, holes.back().m_points);
    }
    HoleMerger merger(outline, points, static_cast<std::size_t>(leftMost), std::move(holes), m_positions->Count());
    while (merger.MergeNext()) {
    }
    if (merger.MergedCount() > 0)
        TakeMerged(merger);
    return merger.MergedCount();
}

/// Puts the merged outline into the working list in place of the old one and of the holes that are part of it now.
/// Changes nothing when memory runs out.
void CrossSection::TakeMerged(HoleMerger const& merger) const {
    auto vertices = merger.Outline();
    auto const merged = merger.MergedEntries();
    ReserveMore(m_addedVertices, merger.Feet().size());
    ReserveMore(m_positions->m_positions, merger.Feet().size());
    for (auto const& foot : merger.Feet())
        m_addedVertices.push_back(m_positions->AddPosition(foot));
    m_convexLoops[0].m_vertices.swap(vertices);
    m_convexLoops[0].Touch();

    // What stays moves forward over what is gone.
    std::size_t kept = merged.front();
    auto next = merged.begin();
    for (std::size_t entry = kept; entry < m_convexLoops.size(); ++entry) {
        if (next != merged.end() && entry == *next) {
            ++next;
        } else {
            m_convexLoops[kept].m_vertices.swap(m_convexLoops[entry].m_vertices);
            m_convexLoops[kept++].Touch();
        }
    }
    m_convexLoops.erase(m_convexLoops.begin() + static_cast<std::ptrdiff_t>(kept), m_convexLoops.end());
}

} // namespace qel::Sectrix
