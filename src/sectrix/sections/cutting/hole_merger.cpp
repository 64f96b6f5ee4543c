#include "sectrix/sections/cutting/hole_merger.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <algorithm>
#include <cmath>
#include <utility>

namespace qel::Sectrix {

namespace {

/// On the product of the height differences between the ends of an edge and a ray.
double const kProductTolerance = 1e-6;

/// Two ends on one side of a ray count as off it where both are further away than this, the root of the tolerance
/// on the product, with some room for rounding.
double const kHeightRoom = 1.01e-3;

/// From this many pairs of a hole and an edge on, the edges are indexed.
std::size_t const kIndexThreshold = 40000;

} // namespace

HoleMerger::HoleMerger(std::vector<Vertex> const& vertices, Scratch::List<Point> const& points,
                       std::size_t leftMost, Scratch::List<Hole> holes, int firstNewIndex)
    : m_holes(std::move(holes)), m_nodes(m_holes.get_allocator()), m_edgeStarts(m_holes.get_allocator()),
      m_feet(m_holes.get_allocator()), m_firstNewIndex(firstNewIndex), m_leftMostX(points[leftMost][0]),
      m_headXs(m_holes.get_allocator()), m_firstWaiting(m_holes.get_allocator()),
      m_nextWaiting(m_holes.get_allocator()), m_nearest(m_holes.get_allocator()) {
    std::size_t total = vertices.size();
    bool isFinite = true;
    auto const check = [&isFinite](Point const& point) {
        isFinite = isFinite && std::isfinite(point[0]) && std::isfinite(point[1]);
    };
    std::for_each(points.begin(), points.end(), check);
    for (auto const& hole : m_holes) {
        total += hole.m_points.size() + 3; // the hole, its head and the foot again, and a new foot
        std::for_each(hole.m_points.begin(), hole.m_points.end(), check);
    }
    if (isFinite && m_holes.size() * total > kIndexThreshold) {
        std::vector<double> heights;
        for (auto const& hole : m_holes) {
            heights.push_back(hole.Head()[1]);
            m_headXs.push_back(hole.Head()[0]);
        }
        m_index.Reset(std::move(heights));
        m_firstWaiting.assign(m_holes.size(), -1);
        m_nextWaiting.reserve(total + m_holes.size());
    }

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

bool HoleMerger::Merge() {
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

/// The foot with the greatest x; of several, that on the earliest edge.
HoleMerger::Foot HoleMerger::FindFoot(Point const& head) {
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
    m_nearest.clear();
    m_index.ForEach(head[1], best.m_point[0], [&](int edge) {
        if (m_edgeStarts[static_cast<std::size_t>(edge)] < 0)
            return false;
        Meet(edge, head, [&](Foot const& foot) {
            if (foot.m_point[0] > best.m_point[0]) {
                best = foot;
                m_nearest.clear();
            }
            bool const isFound = best.m_edge >= 0; // beyond 1e16, the start may be level with the left-most vertex
            if (isFound && foot.m_point[0] == best.m_point[0])
                m_nearest.push_back(foot);
        });
        return true;
    });
    for (auto const& foot : m_nearest)
        if (foot.m_edge != best.m_edge && IsEarlier(foot.m_edge, best.m_edge))
            best = foot;
    return best;
}

/// Lets an edge compete for the foot of the ray from `head`.
template <class Compete>
void HoleMerger::Meet(int edge, Point const& head, Compete compete) const {
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

/// True when `edge` comes before `other` in the outline. Walks from both at once, since edges of one foot lie
/// together.
bool HoleMerger::IsEarlier(int edge, int other) const {
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
int HoleMerger::Split(Foot const& foot) {
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
void HoleMerger::Splice(Hole const& hole, int bridge) {
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

int HoleMerger::AddNode(Point const& point, Vertex vertex) {
    auto& node = m_nodes.emplace_back();
    node.m_point = point;
    node.m_vertex = vertex;
    return static_cast<int>(m_nodes.size()) - 1;
}

/// Makes the edge that leaves a node, whose next one must stand.
void HoleMerger::AddEdge(int node) {
    At(node).m_edge = static_cast<int>(m_edgeStarts.size());
    m_edgeStarts.push_back(node);
    if (m_index.IsInUse())
        FileEdge(At(node).m_edge);
}

/// Indexes an edge, or lets it wait for the first hole whose ray may meet it; without one it is never indexed.
void HoleMerger::FileEdge(int edge) {
    int const node = m_edgeStarts[static_cast<std::size_t>(edge)];
    double const leftX = std::min(At(node).m_point[0], At(NextAround(node)).m_point[0]);
    auto const hole =
        static_cast<std::size_t>(std::upper_bound(m_headXs.begin(), m_headXs.end(), leftX) - m_headXs.begin());
    m_nextWaiting.push_back(-1);
    if (hole <= m_merged)
        IndexEdge(edge);
    else if (hole < m_headXs.size())
        m_nextWaiting.back() = std::exchange(m_firstWaiting[hole], edge);
}

void HoleMerger::IndexEdge(int edge) {
    int const node = m_edgeStarts[static_cast<std::size_t>(edge)];
    auto const& a = At(node).m_point;
    auto const& b = At(NextAround(node)).m_point;
    // A foot lies no further to the right than an end, but for some eight roundings. Where the product that gives it
    // is subnormal, that is off by up to half the least double, 2.5e-324, whatever its size; the quotient, of ends at
    // least 2e-3 apart in height, by 1.3e-321.
    double const reach = std::max(a[0], b[0]) + 2e-15 * (std::abs(a[0]) + std::abs(b[0])) + 1e-320;
    m_index.Add({reach, edge}, std::min(a[1], b[1]) - kHeightRoom, std::max(a[1], b[1]) + kHeightRoom);
}

/// Puts into the index what has waited for the hole that is to be merged, but for edges that have been split.
void HoleMerger::IndexWaitingEdges() {
    for (int edge = std::exchange(m_firstWaiting[m_merged], -1); edge >= 0;
         edge = m_nextWaiting[static_cast<std::size_t>(edge)])
        if (m_edgeStarts[static_cast<std::size_t>(edge)] >= 0)
            IndexEdge(edge);
}

Scratch::List<std::size_t> HoleMerger::MergedEntries() const {
    Scratch::List<std::size_t> entries(m_holes.get_allocator());
    entries.reserve(m_merged);
    for (std::size_t i = 0; i < m_merged; ++i)
        entries.push_back(m_holes[i].m_entry);
    std::sort(entries.begin(), entries.end());
    return entries;
}

std::vector<Vertex> HoleMerger::Outline() const {
    std::vector<Vertex> outline;
    outline.reserve(m_nodes.size());
    for (int node = m_first; node >= 0; node = At(node).m_next)
        outline.push_back(At(node).m_vertex);
    return outline;
}

} // namespace qel::Sectrix
