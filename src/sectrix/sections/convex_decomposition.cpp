#include "sectrix/foundation/strict_arithmetic.h"
#include "sectrix/sections/cross_section.h"

#include <cstddef>
#include <optional>

namespace qel::Sectrix {

namespace {

using Point = Vec<2, double>;
using Place = std::size_t;

/// On a turn value. A corner is strictly convex when its value is at most the negative of this.
double const turnTolerance = 1e-6;

/// The square of a turn value, and the square of a squared distance, up to which two things count as one.
double const squareTolerance = 1e-12;

/// The turn at the corner `q` on the way from `p` to `r`: negative to the left, twice the triangle's area.
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

/// A run of places, both ends included, that can be cut off as a convex piece.
struct Chain {
    Place m_start;
    Place m_end;
};

/// Searches a closed loop of points for a piece to cut off.
class PieceSearch {
public:
    explicit PieceSearch(std::vector<Point> points) : m_points(std::move(points)) {}

    /// The first piece in the order of the walk, or nothing.
    std::optional<Chain> Find() const {
        auto const firstNotch = FindFirstNotch();
        if (!firstNotch)
            return std::nullopt;
        for (Place start = *firstNotch;; start = Next(start)) {
            // On to the last notch of a run; a walk that has come around has tried every start.
            while (Next(start) != *firstNotch && IsNotchAt(Next(start)))
                start = Next(start);
            if (Next(start) == *firstNotch)
                return std::nullopt;
            Chain chain{start, Grow(start)};
            if (Clear(chain))
                return chain;
        }
    }

private:
    std::optional<Place> FindFirstNotch() const {
        for (Place place = 0; place < m_points.size(); ++place)
            if (IsNotchAt(place))
                return place;
        return std::nullopt;
    }

    /// The end of the longest strictly convex chain from `start`. The corner behind `start` is strictly convex.
    Place Grow(Place start) const {
        Place end = Next(Next(start));
        while (Next(end) != start && !IsNotchAt(end) && !IsNotch(At(end), At(Next(end)), At(start)) &&
               !IsNotch(At(Next(end)), At(start), At(Next(start))))
            end = Next(end);
        return end;
    }

    /// Shrinks the chain from its end until no vertex outside it, looked at once in their order, lies in it; false
    /// when nothing is left.
    bool Clear(Chain& chain) const {
        for (Place place = Next(chain.m_end); place != chain.m_start; place = Next(place))
            while (Contains(chain, At(place))) {
                chain.m_end = Previous(chain.m_end);
                if (chain.m_end == Next(chain.m_start))
                    return false;
            }
        return true;
    }

    /// True when the point lies in the piece or on its border, but at none of its corners.
    bool Contains(Chain const& chain, Point const& point) const {
        if (!(Turn(At(chain.m_start), At(chain.m_end), point) > -turnTolerance))
            return false; // beyond the chord
        for (Place place = chain.m_end; place != chain.m_start; place = Previous(place)) {
            auto const& head = At(place);
            auto const& tail = At(Previous(place));
            double const turn = Turn(head, tail, point);
            if (turn >= turnTolerance)
                continue; // on the inner side of this edge
            if (turn * turn > squareTolerance || IsSamePoint(point, head) || IsSamePoint(point, tail))
                return false;
        }
        return true;
    }

    bool IsNotchAt(Place place) const { return IsNotch(At(Previous(place)), At(place), At(Next(place))); }
    Point const& At(Place place) const { return m_points[place]; }
    Place Next(Place place) const { return place + 1 < m_points.size() ? place + 1 : 0; }
    Place Previous(Place place) const { return place > 0 ? place - 1 : m_points.size() - 1; }

    std::vector<Point> m_points;
};

} // namespace

void CrossSection::BuildConvexLoops() const {
    auto const count = m_convexLoops.size();
    for (std::size_t entry = 0; entry < count; ++entry)
        if (m_convexLoops[entry].m_vertices.size() > 3)
            while (!BuildConvexLoop(entry)) {
            }
}

bool CrossSection::BuildConvexLoop(std::uint64_t index) const {
    bool const isListFull = m_convexLoops.size() >= static_cast<std::size_t>(m_positions->Count());
    if (index >= m_convexLoops.size() || isListFull || m_convexLoops[index].m_vertices.size() <= 3)
        return true;

    std::vector<Point> points;
    points.reserve(m_convexLoops[index].m_vertices.size());
    for (auto const& vertex : m_convexLoops[index].m_vertices) {
        auto const* position = m_positions->Find(vertex.Index());
        points.push_back(position ? position->Position() : CSPositions::m_invalidPosition.Position());
    }
    auto const chain = PieceSearch(std::move(points)).Find();
    if (!chain)
        return true;

    auto const start = static_cast<int>(chain->m_start);
    auto const end = static_cast<int>(chain->m_end);
    auto& piece = AddConvexLoop();
    auto& loop = m_convexLoops[index];
    piece.Add(loop, -1, start, end);
    loop.Cut(start, end);
    return false;
}

} // namespace qel::Sectrix
