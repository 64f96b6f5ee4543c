#include "sectrix/sections/ring_cutter.h"
#include "sectrix/foundation/strict_arithmetic.h"

#include <algorithm>
#include <cmath>

namespace qel::Sectrix {

namespace {

using Point = Vec<2, double>;

/// On a turn value. A corner is strictly convex when its value is at most the negative of this.
double const turnTolerance = 1e-6;

/// The square of a turn value, and the square of a squared distance, up to which two things count as one.
double const squareTolerance = 1e-12;

/// From this size on a ring has its points in a grid.
std::size_t const gridThreshold = 96;

/// The turn at the corner `q` on the way from `p` to `r`: negative to the left, twice the area of the triangle.
double Turn(Point const& p, Point const& q, Point const& r) {
    return (p[0] - q[0]) * (r[1] - q[1]) - (p[1] - q[1]) * (r[0] - q[0]);
}

/// Right turns are notches, and so are straight corners: they are cut at like any other.
bool IsNotch(Point const& p, Point const& q, Point const& r) {
    return Turn(p, q, r) > -turnTolerance;
}

bool IsSamePoint(Point const& p, Point const& q) {
    double const dx = p[0] - q[0];
    double const dy = p[1] - q[1];
    double const square = dx * dx + dy * dy;
    return square * square <= squareTolerance;
}

/// At least the length of the edge.
double Reach(Point const& p, Point const& q) {
    return std::abs(p[0] - q[0]) + std::abs(p[1] - q[1]);
}

} // namespace

void RingCutter::Load(std::vector<Vertex> const& vertices, std::vector<Point> const& points) {
    int const count = static_cast<int>(vertices.size());
    m_size = vertices.size();
    m_first = 0;
    m_watches.clear();
    m_notches.Reset(count);
    m_candidates.Reset(count);
    m_ring.clear();
    m_ring.reserve(m_size);
    for (int number = 0; number < count; ++number) {
        auto const place = static_cast<std::size_t>(number);
        int const previous = number > 0 ? number - 1 : count - 1;
        int const next = number + 1 < count ? number + 1 : 0;
        m_ring.push_back({points[place], previous, next, -1, 0, vertices[place], true});
    }
    for (int number = 0; number < count; ++number)
        UpdateNotch(number);
    for (int number = 0; number < count; ++number)
        UpdateCandidate(number);

    m_grid.Clear();
    BBox<2, double> box;
    for (auto const& point : points)
        box.Widen(point);
    double const span = Reach(box.m_min, box.m_max);
    double const reach = Reach(box.m_min, {0.0, 0.0}) + span;
    m_turnError = 1e-14 * span * span;
    m_pointError = 1e-14 * reach;
    m_isTame = reach < 1e150 && std::all_of(points.begin(), points.end(), [](Point const& point) {
                   return std::isfinite(point[0]) && std::isfinite(point[1]);
               });
}

std::optional<RingCutter::Chain> RingCutter::FindPiece() {
    int const firstNotch = m_size > 3 ? m_notches.FirstFrom(m_first) : -1;
    if (firstNotch < 0)
        return std::nullopt;
    KeepGrid();
    for (;;) {
        int const start = m_candidates.FirstFrom(firstNotch);
        if (start < 0)
            return std::nullopt;
        Chain chain{start, Grow(start)};
        int const grownEnd = chain.m_end;
        if (Clear(chain))
            return chain;
        RememberFailure(start, grownEnd);
    }
}

/// The end of the longest strictly convex chain from `start`, whose next corner is strictly convex: it may go on to
/// a vertex only if the corners before it, at it and at the start stay strictly convex when the piece is closed
/// from there.
int RingCutter::Grow(int start) const {
    int end = Next(Next(start));
    while (Next(end) != start && !IsNotchAt(end) && !IsNotch(At(end), At(Next(end)), At(start)) &&
           !IsNotch(At(Next(end)), At(start), At(Next(start))))
        end = Next(end);
    return end;
}

/// Shrinks the chain from its end until no vertex outside it, each looked at once in their order, lies in the
/// piece; false when nothing is left.
bool RingCutter::Clear(Chain& chain) {
    m_shrinkers.clear();
    if (CollectNear(chain))
        return std::all_of(m_near.begin(), m_near.end(), [&](int number) { return ClearOf(number, chain); });
    for (int number = Next(chain.m_end); number != chain.m_start; number = Next(number))
        if (!ClearOf(number, chain))
            return false;
    return true;
}

bool RingCutter::ClearOf(int number, Chain& chain) {
    auto const& point = At(number);
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

/// True when the point lies in the piece or on its border, but at none of its corners.
bool RingCutter::Contains(Chain const& chain, Point const& point) const {
    if (!IsNotch(At(chain.m_start), At(chain.m_end), point))
        return false; // beyond the chord
    for (int number = chain.m_end; number != chain.m_start; number = Previous(number)) {
        auto const& head = At(number);
        auto const& tail = At(Previous(number));
        double const turn = Turn(head, tail, point);
        if (turn >= turnTolerance)
            continue; // on the inner side of this edge
        if (turn * turn > squareTolerance || IsSamePoint(point, head) || IsSamePoint(point, tail))
            return false;
    }
    return true;
}

/// Puts the vertices outside the chain that may lie in the piece, or in one that it shrinks to, into `m_near` in
/// the order of the ring. False when looking at all vertices is the better way.
bool RingCutter::CollectNear(Chain const& chain) {
    if (m_grid.Count() == 0)
        return false;
    double const room = RoomAround(chain);
    if (!(room < 1e150))
        return false;
    m_corners.clear();
    for (int number = chain.m_start; number != Next(chain.m_end); number = Next(number))
        m_corners.push_back(At(number));
    auto const isInRing = [this](int number) { return m_ring[static_cast<std::size_t>(number)].m_isInRing; };
    if (!m_grid.Collect(m_corners, room, m_size / 4, isInRing, m_near))
        return false;

    // Numbers that go around the ring from the end of the chain on; those of the chain itself come last.
    int const count = static_cast<int>(m_ring.size());
    auto const fromEnd = [count, end = chain.m_end](int number) {
        return number > end ? number - end : number - end + count;
    };
    int const start = fromEnd(chain.m_start);
    auto const last =
        std::remove_if(m_near.begin(), m_near.end(), [&](int number) { return fromEnd(number) >= start; });
    m_near.erase(last, m_near.end());
    std::sort(m_near.begin(), m_near.end(), [&](int a, int b) { return fromEnd(a) < fromEnd(b); });
    return true;
}

/// How far outside the chain's polygon a point may lie and still be contained in it or in one that it shrinks to,
/// with the tolerances and all rounding counted in; infinite when a corner is too flat to say.
///
/// The tolerance moves each edge outward by tolerance / length. That moves a corner of edges a and b by at most
/// tolerance * (|a| + |b|) / |turn value|, and a convex polygon grows by no more than its corners move.
double RingCutter::RoomAround(Chain const& chain) const {
    double const tolerance = turnTolerance + m_turnError;
    double room = 0.0;
    bool isFlat = false;
    auto const makeRoom = [&](int p, int q, int r) {
        double const turn = -Turn(At(p), At(q), At(r));
        isFlat |= !(turn > 4 * m_turnError);
        room = std::max(room, tolerance * (Reach(At(p), At(q)) + Reach(At(q), At(r))) / turn);
    };
    int const start = chain.m_start;
    int const second = Next(start);
    for (int number = second; number != chain.m_end && !isFlat; number = Next(number)) {
        int const end = Next(number);
        makeRoom(Previous(number), number, end);
        makeRoom(number, end, start);
        makeRoom(end, start, second);
    }
    return isFlat ? HUGE_VAL : room + m_pointError;
}

void RingCutter::RememberFailure(int start, int grownEnd) {
    m_candidates.Erase(start);
    int const trial = ++m_ring[static_cast<std::size_t>(start)].m_trial;
    auto const watch = [&](int number) {
        auto& head = m_ring[static_cast<std::size_t>(number)].m_watch;
        m_watches.push_back({start, trial, head});
        head = static_cast<int>(m_watches.size()) - 1;
    };
    int const behind = Next(grownEnd);
    for (int number = Next(start); number != behind; number = Next(number))
        watch(number);
    watch(behind);
    for (int number : m_shrinkers)
        watch(number);
}

void RingCutter::CutOff(Chain const& chain, std::vector<Vertex>& piece) {
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
    for (int number = leaving; number != end; number = Next(number))
        TryAgainWithout(number);
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

/// Keeps the points of a large ring in a grid, made anew each time that half of them have left.
void RingCutter::KeepGrid() {
    if (!m_isTame || m_size < gridThreshold) {
        m_grid.Clear();
    } else if (m_size < m_grid.Count() / 2 || m_grid.Count() == 0) {
        m_entries.clear();
        for (std::size_t number = 0; number < m_ring.size(); ++number)
            if (m_ring[number].m_isInRing)
                m_entries.push_back({m_ring[number].m_point, static_cast<int>(number)});
        m_grid.Reset(m_entries);
    }
}

std::vector<Vertex> RingCutter::Rest() const {
    std::vector<Vertex> rest;
    rest.reserve(m_size);
    int number = m_first;
    do {
        rest.push_back(m_ring[static_cast<std::size_t>(number)].m_vertex);
        number = Next(number);
    } while (number != m_first);
    return rest;
}

} // namespace qel::Sectrix
