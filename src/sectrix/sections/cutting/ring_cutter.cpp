#include "sectrix/sections/cutting/ring_cutter.h"
#include "sectrix/sections/cutting/loop_points.h"

#include <algorithm>
#include <cassert>
#include <cmath>

namespace qel::Sectrix {

namespace {

using Point = Vec<2, double>;

/// The square of a turn value, and the square of a squared distance, up to which two things count as one.
double const kSquareTolerance = 1e-12;

/// From this many vertices on a chain is first looked at by its beginning.
std::size_t const kLongThreshold = 6;

/// From this many vertices on a ring has a hierarchy of boxes.
std::size_t const kHierarchyThreshold = 48;

bool IsSamePoint(Point const& p, Point const& q) {
    double const dx = p[0] - q[0];
    double const dy = p[1] - q[1];
    double const square = dx * dx + dy * dy;
    return square * square <= kSquareTolerance;
}

/// True when no product in a turn value can overflow.
bool IsTame(Point const& point) {
    return std::abs(point[0]) < 1e150 && std::abs(point[1]) < 1e150;
}

} // namespace

void RingCutter::Load(std::vector<Vertex> const& vertices, CSPositions const& pool) {
    ReadPoints(vertices, pool, m_points);
    int const count = static_cast<int>(vertices.size());
    m_size = vertices.size();
    m_first = 0;
    m_watches.clear();
    m_watches.reserve(2 * m_size); // mostly enough
    m_reflex.Reset(count);
    m_candidates.Reset(count);
    m_ring.resize(m_size);
    for (int place = 0; place < count; ++place) {
        auto& vertex = VertexAt(place); // filled in its place: a copy would wait for what was just written
        vertex.m_point = m_points[static_cast<std::size_t>(place)];
        vertex.m_previous = place > 0 ? place - 1 : count - 1;
        vertex.m_next = place + 1 < count ? place + 1 : 0;
        vertex.m_firstWatch = -1;
        vertex.m_trial = 0;
        vertex.m_vertex = vertices[static_cast<std::size_t>(place)];
        vertex.m_isInRing = true;
    }
    for (int place = 0; place < count; ++place) {
        if (IsReflexAt(place))
            m_reflex.Insert(place);
        else
            m_candidates.Insert(Previous(place));
    }
    MakeBoxes();
}

/// Makes the hierarchy where there is to be one, and the bounds on rounding errors.
void RingCutter::MakeBoxes() {
    m_boxes.Clear();
    if (m_size < kHierarchyThreshold || !std::all_of(m_points.begin(), m_points.end(), IsTame))
        return;
    m_boxes.Reset(m_points);
    // Of 2^-53 times width times height each: three roundings in either product, and one in their difference, which
    // may be twice as large. A product may also be subnormal, which adds half of the least double. That is nothing
    // beside the turns that the error is compared with, which are 1e-6 at least; and no frame is made of others.
    auto const& box = m_boxes.Whole();
    m_turnError = 1e-15 * (box.m_max[0] - box.m_min[0]) * (box.m_max[1] - box.m_min[1]);
    // Some ninety roundings of the coordinates; a frame and the comparison with it take fewer. Where a turn is
    // 1e-6, no coordinate being over 1e150, both axes have coordinates of 1e-157 and more, so that this is never
    // subnormal.
    m_pointError = 0.0;
    for (auto const& corner : {box.m_min, box.m_max})
        m_pointError += 1e-14 * (std::abs(corner[0]) + std::abs(corner[1]));
}

std::optional<RingCutter::Chain> RingCutter::FindPiece() {
    int const firstReflex = m_size > 3 ? m_reflex.FirstFrom(m_first) : -1;
    if (firstReflex < 0)
        return std::nullopt;
    for (;;) {
        int const start = m_candidates.FirstFrom(firstReflex);
        if (start < 0)
            return std::nullopt;
        Chain chain{start, Grow(start)};
        int const grownEnd = chain.m_end;
        m_shrinkers.clear();
        if (!IsLost(chain) && Shrink(chain))
            return chain;
        RememberFailure(start, grownEnd);
    }
}

/// The end of the longest strictly convex chain from `start`, whose next corner is strictly convex: it may go on to
/// a vertex only if the corners before it, at it and at the start stay strictly convex when the piece is closed
/// from there.
int RingCutter::Grow(int start) {
    int const second = Next(start);
    int end = Next(second);
    auto const &first = At(start), &behindFirst = At(second);
    m_corners.clear();
    m_corners.insert(m_corners.end(), {first, behindFirst, At(end)});
    m_leastTurn = -Turn(first, behindFirst, At(end)); // the same at all three corners, but for rounding
    for (int next = Next(end); next != start; next = Next(next)) {
        auto const& point = At(next);
        double const turns[] = {Turn(m_corners[m_corners.size() - 2], m_corners.back(), point),
                                Turn(m_corners.back(), point, first), Turn(point, first, behindFirst)};
        if (std::any_of(turns, turns + 3, [](double turn) { return turn > -kTurnTolerance; }))
            break;
        m_leastTurn = std::min({m_leastTurn, -turns[0], -turns[1], -turns[2]});
        m_corners.push_back(point);
        end = next;
    }
    return end;
}

/// True only when some vertex in the frame of the first three corners shrinks the chain to nothing, whatever others
/// do before it.
///
/// A long chain that winds around much of the ring, as in a spiral, has a frame around much of it, but fails
/// because of what lies near its beginning. That frame is small.
bool RingCutter::IsLost(Chain const& chain) {
    if (m_corners.size() < kLongThreshold || m_boxes.IsEmpty())
        return false;
    m_triangle.assign(m_corners.begin(), m_corners.begin() + 3);
    if (!MakeFrame(m_triangle, -Turn(m_triangle[0], m_triangle[1], m_triangle[2])))
        return false;
    return !m_boxes.Visit(m_frame, [&](int place, Point const& point) {
        if (IsInChain(place, chain) || !Outlasts(point, chain))
            return true;
        m_shrinkers.push_back(place);
        return false;
    });
}

/// True when the point lies in the piece, and in each that this shrinks to.
bool RingCutter::Outlasts(Point const& point, Chain const& chain) const {
    int const behind = Next(chain.m_end);
    for (int end = Next(Next(chain.m_start)); end != behind; end = Next(end))
        if (!IsReflex(At(chain.m_start), At(end), point))
            return false;
    return PassesEdges(chain, point);
}

/// Shrinks the chain from its end until no vertex outside it, each looked at once in their order, lies in the
/// piece; false when nothing is left.
bool RingCutter::Shrink(Chain& chain) {
    if (m_boxes.IsEmpty() || !MakeFrame(m_corners, m_leastTurn)) {
        for (int place = Next(chain.m_end); place != chain.m_start; place = Next(place))
            if (!ShrinkFor(place, At(place), chain))
                return false;
        return true;
    }
    if (!m_boxes.IsInRingOrder())
        return ShrinkInAnyOrder(chain);
    auto const [start, end] = chain;
    auto const shrinkFor = [&](int place, Point const& point) { return ShrinkFor(place, point, chain); };
    if (end < start)
        return m_boxes.Visit(m_frame, end + 1, start, shrinkFor);
    return m_boxes.Visit(m_frame, end + 1, static_cast<int>(m_ring.size()), shrinkFor) &&
           m_boxes.Visit(m_frame, 0, start, shrinkFor);
}

/// Shrinks the chain from its end until the vertex does not lie in the piece; false when nothing is left.
bool RingCutter::ShrinkFor(int place, Point const& point, Chain& chain) {
    if (!Contains(chain, point))
        return true;
    m_shrinkers.push_back(place);
    // The point has passed every edge of the chain, so of each shorter piece only the chord is left to pass.
    do {
        chain.m_end = Previous(chain.m_end);
        if (chain.m_end == Next(chain.m_start))
            return false;
    } while (IsReflex(At(chain.m_start), At(chain.m_end), point));
    return true;
}

/// True when the point passes all edges of the chain: it lies on the inner side of each, or on its line but at
/// neither end.
bool RingCutter::PassesEdges(Chain const& chain, Point const& point) const {
    for (int place = chain.m_end; place != chain.m_start; place = Previous(place)) {
        auto const& head = At(place);
        auto const& tail = At(Previous(place));
        double const turn = Turn(head, tail, point);
        if (turn >= kTurnTolerance)
            continue; // on the inner side of this edge
        if (turn * turn > kSquareTolerance || IsSamePoint(point, head) || IsSamePoint(point, tail))
            return false;
    }
    return true;
}

/// Shrinks the chain as `Shrink` does where the vertices in the frame come in any order.
bool RingCutter::ShrinkInAnyOrder(Chain& chain) {
    // How far a place is from the end of the chain as it has grown, around the ring.
    int const count = static_cast<int>(m_ring.size());
    auto const fromEnd = [count, end = chain.m_end](int place) {
        return place > end ? place - end : place - end + count;
    };
    bool const isTriangle = m_corners.size() == 3;
    bool isClear = true;
    m_near.clear();
    m_boxes.Visit(m_frame, [&](int place, Point const& point) {
        if (IsInChain(place, chain))
            return true;
        m_near.push_back(place);
        isClear = isClear && !Contains(chain, point);
        return isClear || !isTriangle;
    });
    // Where none lies in the piece as it has grown, it stays. A triangle is lost at any one. Otherwise the piece
    // shrinks by each in the order of the ring.
    if (isClear)
        return true;
    if (isTriangle)
        return ShrinkFor(m_near.back(), At(m_near.back()), chain);
    auto const isLater = [&](int a, int b) { return fromEnd(a) > fromEnd(b); };
    std::make_heap(m_near.begin(), m_near.end(), isLater);
    for (; !m_near.empty(); m_near.pop_back()) {
        std::pop_heap(m_near.begin(), m_near.end(), isLater);
        if (!ShrinkFor(m_near.back(), At(m_near.back()), chain))
            return false;
    }
    return true;
}

/// Makes the frame around a piece; false when there is none, so that all vertices have to be looked at.
bool RingCutter::MakeFrame(Scratch::List<Point> const& corners, double leastTurn) {
    if (!m_frame.Reset(corners, leastTurn, m_turnError, m_pointError))
        return false;
    if (m_boxes.HasBoxes())
        m_frame.AddSides(corners);
    return true;
}

bool RingCutter::IsInChain(int place, Chain const& chain) const {
    auto const [start, end] = chain;
    return start < end ? start <= place && place <= end : start <= place || place <= end;
}

void RingCutter::RememberFailure(int start, int grownEnd) {
    m_candidates.Erase(start);
    int const trial = ++VertexAt(start).m_trial;
    auto const watch = [&](int place) {
        auto& first = VertexAt(place).m_firstWatch;
        m_watches.push_back({start, trial, first});
        first = static_cast<int>(m_watches.size()) - 1;
    };
    int const behind = Next(grownEnd);
    for (int place = Next(start); place != behind; place = Next(place))
        watch(place);
    watch(behind);
    std::for_each(m_shrinkers.begin(), m_shrinkers.end(), watch);
}

void RingCutter::CutOff(Chain const& chain, Scratch::List<Vertex>& piece) {
    assert(VertexAt(chain.m_start).m_isInRing && VertexAt(chain.m_end).m_isInRing);
    auto const begin = piece.size();
    for (int place = chain.m_start; place != Next(chain.m_end); place = Next(place))
        piece.push_back(VertexAt(place).m_vertex);
    piece[begin].SetExterior(false);
    VertexAt(chain.m_end).m_vertex.SetExterior(false);
    Unlink(chain);
}

/// Takes the vertices between the ends of the chain out of the ring, and brings up to date what depends on them.
void RingCutter::Unlink(Chain const& chain) {
    auto const [start, end] = chain;
    int const leaving = Next(start);
    for (int place = leaving; place != end; place = Next(place)) {
        VertexAt(place).m_isInRing = false;
        m_reflex.Erase(place);
        m_candidates.Erase(place);
        if (place == m_first)
            m_first = end;
        --m_size;
    }
    VertexAt(start).m_next = end;
    VertexAt(end).m_previous = start;
    UpdateReflex(start);
    UpdateReflex(end);
    UpdateCandidate(Previous(start));
    UpdateCandidate(start);
    for (int place = leaving; place != end; place = Next(place)) {
        TryAgainWithout(place);
        if (!m_boxes.IsEmpty())
            m_boxes.Remove(place);
    }
}

/// Makes the starts of whose failure a vertex was a witness candidates again.
void RingCutter::TryAgainWithout(int place) {
    for (int w = VertexAt(place).m_firstWatch; w >= 0; w = m_watches[static_cast<std::size_t>(w)].m_next) {
        auto const& watch = m_watches[static_cast<std::size_t>(w)];
        auto& start = VertexAt(watch.m_start);
        if (start.m_isInRing && start.m_trial == watch.m_trial) {
            ++start.m_trial;
            UpdateCandidate(watch.m_start);
        }
    }
}

void RingCutter::UpdateReflex(int place) {
    if (IsReflexAt(place))
        m_reflex.Insert(place);
    else
        m_reflex.Erase(place);
}

void RingCutter::UpdateCandidate(int place) {
    if (m_reflex.Has(Next(place)))
        m_candidates.Erase(place);
    else
        m_candidates.Insert(place);
}

bool RingCutter::IsReflexAt(int place) const {
    return IsReflex(At(Previous(place)), At(place), At(Next(place)));
}

void RingCutter::CopyRest(std::vector<Vertex>& rest) const {
    rest.clear();
    int place = m_first;
    do {
        rest.push_back(VertexAt(place).m_vertex);
        place = Next(place);
    } while (place != m_first);
}

} // namespace qel::Sectrix
