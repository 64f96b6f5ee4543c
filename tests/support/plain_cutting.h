#pragma once

#include <algorithm>
#include <cstddef>
#include <limits>
#include <vector>

/// \file
/// The definition of hole removal and convex cutting, written to be read: a loop within a loop, nothing indexed and
/// nothing remembered from one step to the next. It shares no code with the library and judges it.
///
/// A vertex is known by its place in its ring, counted from 0. Behind the last place comes the first.

namespace plain {

struct Point {
    double x = 0.0, y = 0.0;
};

struct Corner {
    int index;
    bool exterior;
};

using Ring = std::vector<Corner>;

/// What one ring is asked while convex pieces are looked for. A piece is a chain of vertices from a start to an
/// end; the chord from the end back to the start closes it.
struct Polygon {
    std::vector<Point> points;

    int Size() const { return static_cast<int>(points.size()); }
    int Wrap(int place) const { return (place % Size() + Size()) % Size(); }
    Point At(int place) const { return points[static_cast<std::size_t>(Wrap(place))]; }

    /// The turn at Q on the way from P to R: the negative of twice the area of the triangle, so negative to the
    /// left.
    double Turn(int p, int q, int r) const {
        Point const P = At(p), Q = At(q), R = At(r);
        return (P.x - Q.x) * (R.y - Q.y) - (P.y - Q.y) * (R.x - Q.x);
    }

    /// True unless the corner is strictly convex.
    bool IsReflex(int p, int q, int r) const { return Turn(p, q, r) > -1e-6; }
    bool IsReflex(int place) const { return IsReflex(place - 1, place, place + 1); }

    bool IsSamePoint(int p, int q) const {
        double const dx = At(p).x - At(q).x, dy = At(p).y - At(q).y;
        double const square = dx * dx + dy * dy;
        return square * square <= 1e-12;
    }

    /// The first place whose corner is reflex, or -1.
    int FirstReflex() const {
        for (int place = 0; place < Size(); ++place)
            if (IsReflex(place))
                return place;
        return -1;
    }

    /// The last of the run of reflex corners behind `start`, or `start` when there are none; -1 when the walk comes
    /// around to `first`.
    int EndOfRun(int start, int first) const {
        for (int next = Wrap(start + 1); next != first; next = Wrap(next + 1)) {
            if (!IsReflex(next))
                return start;
            start = next;
        }
        return -1;
    }

    /// The end of the longest chain from `start`: it goes on to the next vertex while the corners at its end, at
    /// that vertex and at the start stay strictly convex.
    int Grow(int start) const {
        int end = Wrap(start + 2);
        while (!IsReflex(end) && !IsReflex(end, end + 1, start) && !IsReflex(end + 1, start, start + 1))
            end = Wrap(end + 1);
        return end;
    }

    /// True when the vertex passes the edge of a chain that arrives at `head`: it lies to the left, or on the line
    /// but at neither end.
    bool Passes(int head, int place) const {
        double const turn = Turn(head, head - 1, place);
        if (turn >= 1e-6)
            return true;
        return !(turn * turn > 1e-12) && !IsSamePoint(place, head) && !IsSamePoint(place, Wrap(head - 1));
    }

    /// True when the vertex lies in the piece from `start` to `end`.
    bool Contains(int start, int end, int place) const {
        if (!IsReflex(start, end, place))
            return false; // beyond the chord
        for (int head = end; head != start; head = Wrap(head - 1))
            if (!Passes(head, place))
                return false;
        return true;
    }

    /// The end to which the vertices outside of the chain shrink it, each looked at once; -1 when nothing is left.
    int Shrink(int start, int end) const {
        for (int place = Wrap(end + 1); place != start; place = Wrap(place + 1))
            while (Contains(start, end, place)) {
                end = Wrap(end - 1);
                if (Wrap(end - start) < 2)
                    return -1;
            }
        return end;
    }
};

struct Cutter {
    std::vector<Point> pool;
    std::vector<Ring> loops; // the outline, then the holes; in the end the result
    std::vector<int> added;

    /// Where the bridge from a hole meets the outline.
    struct Foot {
        Point point;
        int bridge = -1;    // the place behind which the hole goes, -1 while there is none
        bool isNew = false; // true where `point` is to become a vertex in front of the place `bridge`
    };

    bool InPool(Corner const& c) const { return c.index >= 0 && c.index < static_cast<int>(pool.size()); }
    Point At(Corner const& c) const { return InPool(c) ? pool[static_cast<std::size_t>(c.index)] : Point{}; }
    Point At(Ring const& ring, int place) const { return At(ring[static_cast<std::size_t>(place)]); }

    /// The first place of least x, or -1.
    int LeftMost(Ring const& ring) const {
        int best = -1;
        double least = std::numeric_limits<double>::max();
        for (std::size_t i = 0; i < ring.size(); ++i)
            if (InPool(ring[i]) && At(ring[i]).x < least) {
                least = At(ring[i]).x;
                best = static_cast<int>(i);
            }
        return best;
    }

    /// The hole whose left-most vertex has the least x, or 0.
    std::size_t ChooseHole() const {
        std::size_t best = 0;
        double least = std::numeric_limits<double>::max();
        for (std::size_t hole = 1; hole < loops.size(); ++hole) {
            int const place = LeftMost(loops[hole]);
            if (place >= 0 && At(loops[hole], place).x < least) {
                least = At(loops[hole], place).x;
                best = hole;
            }
        }
        return best;
    }

    /// Lets the edge of the outline from the place i to the place j compete for the foot of the ray that runs from
    /// `head` to the left.
    void Meet(int i, int j, Point head, Foot& best) const {
        Point const a = At(loops[0], i), b = At(loops[0], j);
        if (!(a.x < head.x) && !(b.x < head.x))
            return;
        double const product = (b.y - head.y) * (a.y - head.y);
        if (product * product > 1e-12) {
            if (!(product < -1e-6))
                return; // both ends lie on one side of the ray
            double const x = (head.y - a.y) * (b.x - a.x) / (b.y - a.y) + a.x;
            if (x < head.x && x > best.point.x)
                best = {{x, head.y}, j, true};
            return;
        }
        if (a.x > best.point.x)
            best = {a, i, false};
        if (b.x > best.point.x)
            best = {b, j, false};
    }

    /// The foot with the greatest x, of equal ones that of the earliest edge; without a bridge when there is none.
    Foot FindFoot(Point head) const {
        Ring const& outline = loops[0];
        int const leftMost = LeftMost(outline);
        bool const isWhole =
            std::all_of(outline.begin(), outline.end(), [&](Corner const& c) { return InPool(c); });
        if (leftMost < 0 || !isWhole)
            return {};
        Foot best{At(outline, leftMost)};
        best.point.x -= 1.0;
        int const n = static_cast<int>(outline.size());
        for (int i = 0; i < n; ++i)
            Meet(i, (i + 1) % n, head, best);
        return best;
    }

    /// Puts the hole, its first vertex and the vertex at the bridge once more behind the bridge.
    void Splice(Ring hole, int first, int bridge) {
        std::rotate(hole.begin(), hole.begin() + first, hole.end());
        hole.push_back(hole.front());
        hole.front().exterior = false;
        hole.push_back({loops[0][static_cast<std::size_t>(bridge)].index, false});
        loops[0].insert(loops[0].begin() + bridge + 1, hole.begin(), hole.end());
    }

    /// Merges one hole into the outline; false when none is left or it cannot be merged.
    bool RemoveHole() {
        std::size_t const hole = ChooseHole();
        if (hole == 0)
            return false;
        int const leftMost = LeftMost(loops[hole]);
        auto const [point, bridge, isNew] = FindFoot(At(loops[hole], leftMost));
        if (bridge < 0)
            return false;
        if (isNew) {
            added.push_back(static_cast<int>(pool.size()));
            pool.push_back(point);
            loops[0].insert(loops[0].begin() + bridge, Corner{added.back(), true});
        }
        Splice(loops[hole], leftMost, bridge);
        loops.erase(loops.begin() + static_cast<std::ptrdiff_t>(hole));
        return true;
    }

    /// Moves the piece from `start` to `end` out of a loop to the end of the list. What is left keeps its order, so
    /// it starts at place 0 unless the piece ran over that.
    void CutOff(std::size_t entry, int start, int end) {
        Ring const ring = loops[entry];
        int const n = static_cast<int>(ring.size());
        Ring piece, rest;
        for (int i = 0; i <= (end - start + n) % n; ++i)
            piece.push_back(ring[static_cast<std::size_t>((start + i) % n)]);
        for (int i = 0; i < n; ++i)
            if (start < end ? i <= start || i >= end : i >= end && i <= start)
                rest.push_back(ring[static_cast<std::size_t>(i)]);
        piece.front().exterior = false;
        rest[start < end ? static_cast<std::size_t>(start) + 1 : 0].exterior = false;
        loops[entry] = rest;
        loops.push_back(piece);
    }

    /// Cuts one piece off a loop; true when there is nothing more to cut.
    bool BuildConvexLoop(std::size_t entry) {
        if (loops.size() >= pool.size() || loops[entry].size() <= 3)
            return true;
        Polygon polygon;
        for (auto const& corner : loops[entry])
            polygon.points.push_back(At(corner));
        int const first = polygon.FirstReflex();
        int start = first < 0 ? -1 : polygon.EndOfRun(first, first);
        for (; start >= 0; start = polygon.EndOfRun(polygon.Wrap(start + 1), first)) {
            int const end = polygon.Shrink(start, polygon.Grow(start));
            if (end >= 0) {
                CutOff(entry, start, end);
                return false;
            }
        }
        return true;
    }

    void Run() {
        if (loops[0].empty())
            return loops.clear();
        while (RemoveHole()) {
        }
        for (std::size_t entry = 0, count = loops.size(); entry < count; ++entry)
            while (!BuildConvexLoop(entry)) {
            }
    }
};

} // namespace plain
