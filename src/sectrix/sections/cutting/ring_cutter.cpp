#include "sectrix/sections/cutting/ring_cutter.h"

#include <algorithm>
#include <cmath>

namespace qel::Sectrix {

namespace {

using Point = Vec<2, double>;

/// The square of a turn value, and the square of a squared distance, up to which two things count as one.
double const kSquareTolerance = 1e-12;

/// From this size on a chain is first looked at by its beginning.
std::size_t const kLeastLong = 6;

/// From this size on a ring has blocks of its vertices.
std::size_t const kBlockThreshold = 48;

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

void RingCutter::Load(std::vector<Vertex> const& vertices, Scratch::List<Point> const& points) {
    int const count = static_cast<int>(vertices.size());
    m_size = vertices.size();
    m_first = 0;
    m_watches.clear();
    m_watches.reserve(2 * m_size); // mostly enough
    m_notches.Reset(count);
    m_candidates.Reset(count);
    m_ring.resize(m_size);
    for (int number = 0; number < count; ++number) {
        auto const place = static_cast<std::size_t>(number);
        auto& entry = m_ring[place]; // filled in place, since a copy of what has just been written is slow
        entry.m_point = points[place];
        entry.m_previous = number > 0 ? number - 1 : count - 1;
        entry.m_next = number + 1 < count ? number + 1 : 0;
        entry.m_watch = -1;
        entry.m_trial = 0;
        entry.m_vertex = vertices[place];
        entry.m_isInRing = true;
    }
    for (int number = 0; number < count; ++number) {
        if (IsNotchAt(number))
            m_notches.Insert(number);
        else
            m_candidates.Insert(Previous(number));
    }

    m_blocks.Clear();
    if (m_size < kBlockThreshold || !std::all_of(points.begin(), points.end(), IsTame))
        return;
    m_blocks.Reset(points);
    // Of 2^-53 times width times height each: three roundings in either product, and one in their difference, which
    // may be twice as large.
    auto const& box = m_blocks.Whole();
    m_turnError = 1e-15 * (box.m_max[0] - box.m_min[0]) * (box.m_max[1] - box.m_min[1]);
    // Some ninety roundings of the coordinates; a frame and the comparison with it take fewer.
    m_pointError = 0.0;
    for (auto const& corner : {box.m_min, box.m_max})
        m_pointError += 1e-14 * (std::abs(corner[0]) + std::abs(corner[1]));
}

std::optional<RingCutter::Chain> RingCutter::FindPiece() {
    int const firstNotch = m_size > 3 ? m_notches.FirstFrom(m_first) : -1;
    if (firstNotch < 0)
        return std::nullopt;
    for (;;) {
        int const start = m_candidates.FirstFrom(firstNotch);
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

/// True only when a vertex near the first three corners shrinks the chain to nothing, whatever others do before it.
///
/// Where long chains wind around much of the ring, as in a spiral, this says so without a look at all that they
/// enclose.
bool RingCutter::IsLost(Chain const& chain) {
    if (m_corners.size() < kLeastLong || m_blocks.IsEmpty())
        return false;
    m_triangle.assign(m_corners.begin(), m_corners.begin() + 3);
    double const turn = -Turn(m_triangle[0], m_triangle[1], m_triangle[2]);
    if (!m_frame.Reset(m_triangle, turn, m_turnError, m_pointError))
        return false;
    if (m_blocks.HasBlocks())
        m_frame.AddSides(m_triangle);
    return !m_blocks.Visit(m_frame, [&](int number, Point const& point) {
        if (IsInChain(number, chain) || !Outlasts(point, chain))
            return true;
        m_shrinkers.push_back(number);
        return false;
    });
}

/// True when the point lies in the piece, and in each that this shrinks to.
bool RingCutter::Outlasts(Point const& point, Chain const& chain) const {
    int const behind = Next(chain.m_end);
    for (int end = Next(Next(chain.m_start)); end != behind; end = Next(end))
        if (!IsNotch(At(chain.m_start), At(end), point))
            return false;
    return PassesEdges(chain, point);
}

/// Shrinks the chain from its end until no vertex outside it, each looked at once in their order, lies in the
/// piece; false when nothing is left.
bool RingCutter::Shrink(Chain& chain) {
    if (m_blocks.IsEmpty() || !MakeFrame()) {
        for (int number = Next(chain.m_end); number != chain.m_start; number = Next(number))
            if (!ShrinkFor(number, At(number), chain))
                return false;
        return true;
    }
    if (!m_blocks.IsInRingOrder())
        return ShrinkForNear(chain);
    auto const [start, end] = chain;
    auto const shrinkFor = [&](int number, Point const& point) { return ShrinkFor(number, point, chain); };
    if (end < start)
        return m_blocks.Visit(m_frame, end + 1, start, shrinkFor);
    return m_blocks.Visit(m_frame, end + 1, static_cast<int>(m_ring.size()), shrinkFor) &&
           m_blocks.Visit(m_frame, 0, start, shrinkFor);
}

/// Shrinks the chain from its end until the vertex does not lie in the piece; false when nothing is left.
bool RingCutter::ShrinkFor(int number, Point const& point, Chain& chain) {
    if (!Contains(chain, point))
        return true;
    m_shrinkers.push_back(number);
    // The point has passed every edge of the chain, so of each shorter piece only the chord is left to pass.
    do {
        chain.m_end = Previous(chain.m_end);
        if (chain.m_end == Next(chain.m_start))
            return false;
    } while (IsNotch(At(chain.m_start), At(chain.m_end), point));
    return true;
}

/// True when the point passes all edges of the chain: it lies on the inner side of each, or on its line but at
/// neither end.
bool RingCutter::PassesEdges(Chain const& chain, Point const& point) const {
    for (int number = chain.m_end; number != chain.m_start; number = Previous(number)) {
        auto const& head = At(number);
        auto const& tail = At(Previous(number));
        double const turn = Turn(head, tail, point);
        if (turn >= kTurnTolerance)
            continue; // on the inner side of this edge
        if (turn * turn > kSquareTolerance || IsSamePoint(point, head) || IsSamePoint(point, tail))
            return false;
    }
    return true;
}

/// The same by the vertices that may lie in the piece or in one that it shrinks to, which come in any order.
bool RingCutter::ShrinkForNear(Chain& chain) {
    // Numbers that go around the ring from the end of the chain on.
    int const count = static_cast<int>(m_ring.size());
    auto const fromEnd = [count, end = chain.m_end](int number) {
        return number > end ? number - end : number - end + count;
    };
    bool const isTriangle = m_corners.size() == 3;
    bool isClear = true;
    m_near.clear();
    m_blocks.Visit(m_frame, [&](int number, Point const& point) {
        if (IsInChain(number, chain))
            return true;
        m_near.push_back(number);
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

/// Makes the frame around the piece as it has grown; false when there is none, so that all vertices have to be
/// looked at.
bool RingCutter::MakeFrame() {
    if (!m_frame.Reset(m_corners, m_leastTurn, m_turnError, m_pointError))
        return false;
    if (m_blocks.HasBlocks())
        m_frame.AddSides(m_corners);
    return true;
}

bool RingCutter::IsInChain(int number, Chain const& chain) const {
    auto const [start, end] = chain;
    return start < end ? start <= number && number <= end : start <= number || number <= end;
}

void RingCutter::RememberFailure(int start, int grownEnd) {
    m_candidates.Erase(start);
    int const trial = ++m_ring[static_cast<std::size_t>(start)].m_trial;
    auto const watch = [&](int number) {
        auto& head = m_ring[static_cast<std::size_t>(number)].m_watch;
        auto& entry = m_watches.emplace_back();
        entry.m_start = start;
        entry.m_trial = trial;
        entry.m_next = head;
        head = static_cast<int>(m_watches.size()) - 1;
    };
    int const behind = Next(grownEnd);
    for (int number = Next(start); number != behind; number = Next(number))
        watch(number);
    watch(behind);
    for (int number : m_shrinkers)
        watch(number);
}

void RingCutter::CutOff(Chain const& chain, Scratch::List<Vertex>& piece) {
    auto const begin = piece.size();
    for (int number = chain.m_start; number != Next(chain.m_end); number = Next(number))
        piece.push_back(m_ring[static_cast<std::size_t>(number)].m_vertex);
    piece[begin].SetExterior(false);
    m_ring[static_cast<std::size_t>(chain.m_end)].m_vertex.SetExterior(false);
    Unlink(chain);
}

/// Takes the vertices between the ends of the chain out of the ring, and brings up to date what depends on them.
void RingCutter::Unlink(Chain const& chain) {
    auto const [start, end] = chain;
    int const leaving = Next(start);
    for (int number = leaving; number != end; number = Next(number)) {
        m_ring[static_cast<std::size_t>(number)].m_isInRing = false;
        m_notches.Erase(number);
        m_candidates.Erase(number);
        if (number == m_first)
            m_first = end;
        --m_size;
    }
    m_ring[static_cast<std::size_t>(start)].m_next = end;
    m_ring[static_cast<std::size_t>(end)].m_previous = start;
    UpdateNotch(start);
    UpdateNotch(end);
    UpdateCandidate(Previous(start));
    UpdateCandidate(start);
    for (int number = leaving; number != end; number = Next(number)) {
        TryAgainWithout(number);
        if (!m_blocks.IsEmpty())
            m_blocks.Remove(number);
    }
}

/// Makes the starts that a vertex has failed candidates again.
void RingCutter::TryAgainWithout(int number) {
    for (int w = m_ring[static_cast<std::size_t>(number)].m_watch; w >= 0;
         w = m_watches[static_cast<std::size_t>(w)].m_next) {
        auto const& watch = m_watches[static_cast<std::size_t>(w)];
        auto& start = m_ring[static_cast<std::size_t>(watch.m_start)];
        if (start.m_isInRing && start.m_trial == watch.m_trial) {
            ++start.m_trial;
            UpdateCandidate(watch.m_start);
        }
    }
}

void RingCutter::UpdateNotch(int number) {
    if (IsNotchAt(number))
        m_notches.Insert(number);
    else
        m_notches.Erase(number);
}

void RingCutter::UpdateCandidate(int number) {
    if (m_notches.Has(Next(number)))
        m_candidates.Erase(number);
    else
        m_candidates.Insert(number);
}

bool RingCutter::IsNotchAt(int number) const {
    return IsNotch(At(Previous(number)), At(number), At(Next(number)));
}

void RingCutter::CopyRest(std::vector<Vertex>& rest) const {
    rest.clear();
    int number = m_first;
    do {
        rest.push_back(m_ring[static_cast<std::size_t>(number)].m_vertex);
        number = Next(number);
    } while (number != m_first);
}

} // namespace qel::Sectrix
