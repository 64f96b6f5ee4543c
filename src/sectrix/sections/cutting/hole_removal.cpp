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
std::size_t const kIndexThreshold = 65000;

} // namespace

/// An outline and the holes to be merged into it, one after the other in ascending order of their least x.
///
/// From the left-most vertex of a hole, its head, a ray runs to the left. Where it first meets the outline, with
/// all holes merged so far, stands the foot of the bridge: a vertex of the outline, or a new one on an edge. The
/// outline then goes over the bridge, around the hole and back.
///
/// All loops are rings of linked nodes, one a vertex, in an array that only grows. An edge is known by a number of
/// its own: when a hole is spliced in at a vertex, the edge that leaves there is the same as before but begins at
/// another node, the second occurrence of that vertex.
///
/// Nothing but this object changes until the caller takes the result.
class HoleMerger {
public:
    using Point = Vec<2, double>;

    /// \param loops  the outline and the holes. They only get to remember their left-most vertices.
    /// \param pool   of their positions.
    /// \param limit  at most so many holes are merged.
    HoleMerger(std::vector<Loop>& loops, CSPositions const& pool, std::size_t limit, Scratch& memory)
        : m_holes(memory), m_points(memory), m_vertices(memory), m_links(memory), m_edges(memory), m_feet(memory),
          m_firstNewIndex(pool.Count()), m_level(memory), m_headXs(memory), m_firstWaiting(memory),
          m_nextWaiting(memory) {
        MakeRoom(loops);
        if (!ReadLoops(loops, pool))
            limit = std::min<std::size_t>(limit, 1);
        std::sort(m_holes.begin(), m_holes.end(), [](Hole const& a, Hole const& b) {
            return a.m_headX < b.m_headX || (a.m_headX == b.m_headX && a.m_entry < b.m_entry);
        });
        if (limit < m_holes.size())
            m_holes.erase(m_holes.begin() + static_cast<std::ptrdiff_t>(limit), m_holes.end());
        if (m_holes.empty())
            return;
        if (m_holes.size() * m_links.size() > kIndexThreshold && HasFinitePoints())
            PrepareIndex();
        m_edges[0] = {std::numeric_limits<double>::quiet_NaN(), -1}; // on no side of any ray
        m_edgeCount = 1;
        AddEdges(0, 0);
        m_index.Sort();
    }

    /// Merges the next hole; false, with nothing changed, when its ray meets nothing or there is none left.
    bool MergeNext() {
        if (m_merged == m_holes.size())
            return false;
        auto const& hole = m_holes[m_merged];
        auto const* const foot = FindFoot(At(hole.m_head));
        if (!foot)
            return false;
        Splice(hole, foot->m_node >= 0 ? foot->m_node : Split(*foot));
        ++m_merged;
        return true;
    }

    /// The number of holes merged so far.
    std::size_t MergedCount() const { return m_merged; }
    /// Their entries in the list of loops, ascending.
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
        std::vector<Vertex> outline(m_vertices.begin(), m_vertices.end()); // no fewer; they are put in order below
        auto vertex = outline.begin();
        int node = m_first;
        do {
            *vertex++ = VertexAt(node);
            node = Next(node);
        } while (node != m_first);
        outline.erase(vertex, outline.end());
        return outline;
    }

private:
    /// A hole, by its entry in the list of loops. Its nodes stand side by side; the head is the left-most of them.
    struct Hole {
        double m_headX;
        std::size_t m_entry;
        int m_firstNode, m_lastNode, m_head;
    };

    /// Where the bridge from a hole meets the outline.
    struct Foot {
        Point m_point;
        /// The edge that gave the foot.
        int m_edge;
        /// The node at the foot; -1 where the foot lies on the edge between its ends.
        int m_node;
    };

    /// What a loop has become.
    struct Ring {
        int m_firstNode, m_lastNode;
        /// The place of the left-most vertex; -1 where there is none.
        int m_leftMost;
        /// True when all vertices are in the pool.
        bool m_isWhole;
    };

    /// For all that merging adds, too. Only feet that are level may be more.
    void MakeRoom(std::vector<Loop> const& loops) {
        std::size_t nodes = 0;
        for (auto const& loop : loops)
            nodes += loop.m_vertices.size() + 3; // the head and the foot again, and a new foot
        m_points.reserve(nodes);
        m_vertices.reserve(nodes);
        m_links.resize(nodes);
        m_edges.resize(nodes + 3 * loops.size()); // what ends a run of edges, too
        m_holes.reserve(loops.size());
        m_feet.reserve(loops.size());
        m_level.reserve(4);
    }

    /// Makes nodes of all loops, and finds the holes that have a left-most vertex, but none where the outline
    /// cannot be merged with any. False unless merging all of them at once gives what merging one after the other
    /// gives, read anew each time.
    ///
    /// There are two things that may change their meaning in between. A left-most vertex that a loop remembers is
    /// forgotten, so that one which was worked out before its positions moved counts the first time only. And an
    /// index beyond the pool becomes valid when a foot is added.
    bool ReadLoops(std::vector<Loop>& loops, CSPositions const& pool) {
        bool isSettled = true;
        auto const findLeftMost = [&](Loop const& loop, Ring const& ring) {
            bool const isOver = loop.m_positions == &pool && ring.m_isWhole;
            int const leftMost = isOver ? ring.m_leftMost : loop.FindLeftMost();
            isSettled = isSettled && isOver && (loop.m_leftMost < 0 || loop.m_leftMost == leftMost);
            return loop.m_leftMost < 0 ? leftMost : loop.m_leftMost;
        };
        auto const outline = ReadRing(loops[0].m_vertices, pool);
        int const leftMost = findLeftMost(loops[0], outline);
        for (std::size_t entry = 1; entry < loops.size(); ++entry) {
            auto const ring = ReadRing(loops[entry].m_vertices, pool);
            int const place = loops[entry].m_leftMost = findLeftMost(loops[entry], ring);
            if (place < 0)
                continue;
            int const head = ring.m_firstNode + place;
            bool found = false;
            pool.GetPosition(static_cast<std::uint64_t>(VertexAt(head).Index()), found);
            if (found && At(head)[0] < std::numeric_limits<double>::max())
                m_holes.push_back({At(head)[0], entry, ring.m_firstNode, ring.m_lastNode, head});
        }
        if (!m_holes.empty())
            loops[0].m_leftMost = leftMost;
        if (leftMost < 0 || !outline.m_isWhole)
            m_holes.clear();
        else
            m_leftMostX = At(leftMost)[0];
        return isSettled;
    }

    /// Makes a ring of nodes of a loop.
    Ring ReadRing(std::vector<Vertex> const& vertices, CSPositions const& pool) {
        int const first = static_cast<int>(m_points.size());
        bool const isWhole = AppendPoints(vertices, pool, m_points);
        m_vertices.insert(m_vertices.end(), vertices.begin(), vertices.end());
        int const end = static_cast<int>(m_points.size());
        int leftMost = -1;
        double least = std::numeric_limits<double>::max();
        for (int node = first; node < end; ++node) {
            Next(node) = node + 1 < end ? node + 1 : first;
            if (At(node)[0] < least) {
                least = At(node)[0];
                leftMost = node - first;
            }
        }
        return {first, end - 1, leftMost, isWhole};
    }

    int AddNode(Point const& point, Vertex vertex, int next) {
        int const node = static_cast<int>(m_points.size());
        m_points.push_back(point);
        m_vertices.push_back(vertex);
        Next(node) = next;
        return node;
    }

    bool HasFinitePoints() const {
        return std::all_of(m_points.begin(), m_points.end(),
                           [](Point const& point) { return std::isfinite(point[0]) && std::isfinite(point[1]); });
    }

    void PrepareIndex() {
        std::vector<double> heights;
        for (auto const& hole : m_holes) {
            heights.push_back(At(hole.m_head)[1]);
            m_headXs.push_back(hole.m_headX);
        }
        m_index.Reset(std::move(heights));
        m_firstWaiting.assign(m_holes.size(), -1);
        m_nextWaiting.resize(m_edges.size());
    }

    /// The foot with the greatest x, of several that on the earliest edge; null where there is none.
    Foot const* FindFoot(Point const& head) {
        m_level.clear();
        m_bestX = m_leftMostX - 1.0; // every point of the outline is nearer
        if (m_index.IsInUse()) {
            IndexWaitingEdges();
            m_index.ForEach(head[1], m_bestX, [&](int edge) { return Meet(edge, head); });
            std::sort(m_level.begin(), m_level.end(),
                      [](Foot const& a, Foot const& b) { return a.m_edge < b.m_edge; });
        } else {
            MeetAll(head);
        }
        KeepEarliest();
        return m_level.empty() ? nullptr : &m_level.front();
    }

    /// Lets all edges compete for the foot of the ray from `head`, the latest first, which mostly lie near. Runs of
    /// vertices on one side of the ray are passed over, but for the edge to what comes before.
    void MeetAll(Point const& head) {
        double const above = head[1] + kHeightRoom;
        double const below = head[1] - kHeightRoom;
        auto const* edge = m_edges.data() + m_edgeCount - 1;
        for (; edge != m_edges.data(); --edge) {
            if (edge->m_height > above)
                while (edge[-1].m_height > above)
                    --edge;
            else if (edge->m_height < below)
                while (edge[-1].m_height < below)
                    --edge;
            Meet(static_cast<int>(edge - m_edges.data()) - 1, head);
        }
    }

    /// Lets an edge compete for the foot of the ray from `head`; false for one that is no more.
    bool Meet(int edge, Point const& head) {
        int const start = EdgeStart(edge);
        if (start < 0)
            return false;
        int const end = Next(start);
        auto const& a = At(start);
        auto const& b = At(end);
        if (!(a[0] < head[0]) && !(b[0] < head[0]))
            return true;
        double const product = (b[1] - head[1]) * (a[1] - head[1]);
        if (product * product > kProductTolerance * kProductTolerance) {
            if (!(product < -kProductTolerance))
                return true; // both ends on one side of the ray
            double const x = (head[1] - a[1]) * (b[0] - a[0]) / (b[1] - a[1]) + a[0];
            if (x < head[0] && x >= m_bestX)
                Keep({{x, head[1]}, edge, -1});
        } else {
            // An end lies at the height of the ray. Both compete, without a look at which one it is.
            if (a[0] >= m_bestX)
                Keep({a, edge, start});
            if (b[0] >= m_bestX)
                Keep({b, edge, end});
        }
        return true;
    }

    /// Keeps a foot than which none is better. Of two on one edge that are level the first counts.
    void Keep(Foot const& foot) {
        if (foot.m_point[0] > m_bestX) {
            m_bestX = foot.m_point[0];
            m_level.clear();
            m_level.push_back(foot);
        } else if (!m_level.empty() && m_level.back().m_edge != foot.m_edge) {
            // Level with another foot; beyond 1e16, where the search begins may be level with the left-most vertex.
            m_level.push_back(foot);
        }
    }

    /// Of the best feet, in the order in which their edges were made or in the opposite one, keeps the one on the
    /// earliest edge. They are compared pair by pair, then the winners, and so on: what was made one after the
    /// other mostly lies together.
    void KeepEarliest() {
        while (m_level.size() > 1) {
            auto winner = m_level.begin();
            auto foot = winner;
            for (; m_level.end() - foot > 1; foot += 2)
                *winner++ = IsEarlier(foot[0].m_edge, foot[1].m_edge) ? foot[0] : foot[1];
            if (foot != m_level.end())
                *winner++ = *foot;
            m_level.erase(winner, m_level.end());
        }
    }

    /// True when `edge` comes before `other` in the outline. Walks from both at once.
    bool IsEarlier(int edge, int other) const {
        int const mine = EdgeStart(edge);
        int const theirs = EdgeStart(other);
        int fromMine = mine;
        int fromTheirs = theirs;
        for (;;) {
            fromMine = Next(fromMine);
            fromTheirs = Next(fromTheirs);
            if (fromTheirs == m_first)
                return true;
            if (fromMine == m_first || fromTheirs == mine)
                return false;
            if (fromMine == theirs)
                return true;
        }
    }

    /// Puts a new vertex where the foot lies, and returns it.
    int Split(Foot const& foot) {
        int const before = std::exchange(EdgeStart(foot.m_edge), -1);
        int const behind = Next(before);
        int const node =
            AddNode(foot.m_point, Vertex(m_firstNewIndex + static_cast<int>(m_feet.size()), true), behind);
        m_feet.push_back(foot.m_point);
        m_leftMostX = std::min(m_leftMostX, foot.m_point[0]);
        Next(before) = node;
        if (behind == m_first) // on the closing edge, a new vertex comes first
            m_first = node;
        AddEdges(before, behind);
        return node;
    }

    /// Puts the hole from its head on, the head once more and the foot once more behind the foot.
    void Splice(Hole const& hole, int bridge) {
        int const beforeHead = hole.m_head == hole.m_firstNode ? hole.m_lastNode : hole.m_head - 1;
        int const last = AddNode(At(bridge), Vertex(VertexAt(bridge).Index(), false), Next(bridge));
        Next(beforeHead) = AddNode(At(hole.m_head), VertexAt(hole.m_head), last);
        Next(bridge) = hole.m_head;
        VertexAt(hole.m_head).SetExterior(false);
        m_leftMostX = std::min(m_leftMostX, hole.m_headX);

        // The edge that left the foot leaves its second occurrence now, and is the same.
        int const oldEdge = m_links[static_cast<std::size_t>(bridge)].m_edge;
        m_links[static_cast<std::size_t>(last)].m_edge = oldEdge;
        EdgeStart(oldEdge) = last;
        AddEdges(bridge, last);
    }

    /// Makes the edges from one node to another, or all around from a node to itself.
    void AddEdges(int from, int to) {
        int const first = m_edgeCount;
        int edge = first;
        int node = from;
        do {
            auto& link = m_links[static_cast<std::size_t>(node)];
            link.m_edge = edge;
            m_edges[static_cast<std::size_t>(edge++)] = {At(node)[1], node};
            node = link.m_next;
        } while (node != to);
        m_edges[static_cast<std::size_t>(edge)] = {At(to)[1], -1};
        m_edgeCount = edge + 1;
        if (m_index.IsInUse())
            while (edge-- > first)
                IndexOrLetWait(edge);
    }

    /// Puts a new edge into the index, or lets it wait for the first hole whose ray may meet it; without such a
    /// hole it is never indexed.
    void IndexOrLetWait(int edge) {
        int const node = EdgeStart(edge);
        double const leftX = std::min(At(node)[0], At(Next(node))[0]);
        auto const hole =
            static_cast<std::size_t>(std::upper_bound(m_headXs.begin(), m_headXs.end(), leftX) - m_headXs.begin());
        if (hole <= m_merged)
            IndexEdge(edge);
        else if (hole < m_headXs.size())
            m_nextWaiting[static_cast<std::size_t>(edge)] = std::exchange(m_firstWaiting[hole], edge);
    }

    void IndexEdge(int edge) {
        int const node = EdgeStart(edge);
        auto const& a = At(node);
        auto const& b = At(Next(node));
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
            if (EdgeStart(edge) >= 0)
                IndexEdge(edge);
    }

    Point const& At(int node) const { return m_points[static_cast<std::size_t>(node)]; }
    Vertex& VertexAt(int node) { return m_vertices[static_cast<std::size_t>(node)]; }
    Vertex const& VertexAt(int node) const { return m_vertices[static_cast<std::size_t>(node)]; }
    int& Next(int node) { return m_links[static_cast<std::size_t>(node)].m_next; }
    int Next(int node) const { return m_links[static_cast<std::size_t>(node)].m_next; }
    int& EdgeStart(int edge) { return m_edges[static_cast<std::size_t>(edge)].m_start; }
    int EdgeStart(int edge) const { return m_edges[static_cast<std::size_t>(edge)].m_start; }

    struct Link {
        int m_next;
        /// The edge that leaves here, once there is one.
        int m_edge;
    };

    struct Edge {
        double m_height;
        int m_start;
    };

    /// In the order of merging.
    Scratch::List<Hole> m_holes;
    std::size_t m_merged = 0;
    /// By node, its point, its vertex, and what it is linked to. The outline begins at 0; behind it stands hole
    /// after hole, then what merging has added.
    Scratch::List<Point> m_points;
    Scratch::List<Vertex> m_vertices;
    Scratch::List<Link> m_links;
    /// The first node of the outline.
    int m_first = 0;
    /// By edge, the node at which it begins, -1 once it has been split, and the height there. The height of its end
    /// comes next: edges are made in runs, and behind each run stands the height of its last end, with -1.
    /// At 0 stands no edge.
    Scratch::List<Edge> m_edges;
    int m_edgeCount = 0;
    Scratch::List<Point> m_feet;
    int m_firstNewIndex;
    /// The least x of the outline, and so of every foot.
    double m_leftMostX = 0.0;
    /// The greatest x of a foot in the present search, and the feet there.
    double m_bestX = 0.0;
    Scratch::List<Foot> m_level;
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
    return m_convexLoops.size() > 1 && MergeHoles(1) > 0;
}

void CrossSection::RemoveHoles() const {
    // Where holes are left, the last call merges nothing. After it all loops remember their left-most vertices.
    while (m_convexLoops.size() > 1 && MergeHoles(m_convexLoops.size()) > 0) {
    }
}

/// Merges up to `limit` holes of the working list into the outline, and returns how many.
std::size_t CrossSection::MergeHoles(std::size_t limit) const {
    Scratch scratch;
    HoleMerger merger(m_convexLoops, *m_positions, limit, scratch);
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
