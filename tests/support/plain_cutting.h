#pragma once

#include <limits>
#include <vector>

/// \file
/// The slow, obvious twin of hole removal and convex cutting: one list of corners a loop, one state after another,
/// nothing remembered from one step to the next. It shares no code with the library and judges it.

namespace plain {

struct Point {
    double x = 0.0, y = 0.0;
};

struct Corner {
    int index;
    bool exterior;
};

using Ring = std::vector<Corner>;

struct Cutter {
    std::vector<Point> pool;
    std::vector<Ring> loops; // the outline, then the holes; in the end the result
    std::vector<int> added;

    bool InPool(Corner const& c) const { return c.index >= 0 && c.index < static_cast<int>(pool.size()); }
    Point At(Corner const& c) const { return InPool(c) ? pool[static_cast<std::size_t>(c.index)] : Point{}; }

    int LeftMost(Ring const& ring) const {
        int best = -1;
        double x = std::numeric_limits<double>::max();
        for (std::size_t i = 0; i < ring.size(); ++i)
            if (InPool(ring[i]) && At(ring[i]).x < x) {
                x = At(ring[i]).x;
                best = static_cast<int>(i);
            }
        return best;
    }

    bool RemoveHole() {
        std::size_t hole = 0;
        int place = -1;
        double least = std::numeric_limits<double>::max();
        for (std::size_t entry = 1; entry < loops.size(); ++entry) {
            int const left = LeftMost(loops[entry]);
            if (left >= 0 && At(loops[entry][static_cast<std::size_t>(left)]).x < least) {
                least = At(loops[entry][static_cast<std::size_t>(left)]).x;
                hole = entry;
                place = left;
            }
        }
        if (place < 0 || LeftMost(loops[0]) < 0)
            return false;
        Ring& outline = loops[0];
        Point const h = At(loops[hole][static_cast<std::size_t>(place)]);
        Point best = At(outline[static_cast<std::size_t>(LeftMost(outline))]);
        best.x -= 1.0;
        int bridge = -1, far = -1;
        int const n = static_cast<int>(outline.size());
        for (int i = 0; i < n; ++i) {
            int const j = (i + 1) % n;
            Corner const ca = outline[static_cast<std::size_t>(i)], cb = outline[static_cast<std::size_t>(j)];
            if (!InPool(ca) || !InPool(cb))
                return false;
            Point const a = At(ca), b = At(cb);
            if (!(a.x < h.x) && !(b.x < h.x))
                continue;
            double const p = (b.y - h.y) * (a.y - h.y);
            if (p * p > 1e-12 && !(p < -1e-6))
                continue;
            if (p * p > 1e-12) {
                double const x = (h.y - a.y) * (b.x - a.x) / (b.y - a.y) + a.x;
                if (x < h.x && x > best.x) {
                    best = {x, h.y};
                    bridge = i;
                    far = j;
                }
                continue;
            }
            if (a.x > best.x) {
                best = a;
                bridge = i;
                far = -1;
            }
            if (b.x > best.x) {
                best = b;
                bridge = j;
                far = -1;
            }
        }
        if (bridge < 0)
            return false;
        if (far >= 0) {
            pool.push_back(best);
            added.push_back(static_cast<int>(pool.size()) - 1);
            outline.insert(outline.begin() + far, Corner{added.back(), true});
            bridge = far;
        }
        Ring splice;
        for (std::size_t k = 0; k <= loops[hole].size(); ++k)
            splice.push_back(loops[hole][(static_cast<std::size_t>(place) + k) % loops[hole].size()]);
        splice.front().exterior = false;
        splice.push_back(Corner{outline[static_cast<std::size_t>(bridge)].index, false});
        outline.insert(outline.begin() + bridge + 1, splice.begin(), splice.end());
        loops.erase(loops.begin() + static_cast<std::ptrdiff_t>(hole));
        return true;
    }

    double Turn(Ring const& ring, int p, int q, int r) const {
        int const n = static_cast<int>(ring.size());
        auto const at = [&](int i) { return At(ring[static_cast<std::size_t>((i % n + n) % n)]); };
        Point const P = at(p), Q = at(q), R = at(r);
        return (P.x - Q.x) * (R.y - Q.y) - (P.y - Q.y) * (R.x - Q.x);
    }

    bool SamePoint(Ring const& ring, int p, int q) const {
        Point const P = At(ring[static_cast<std::size_t>(p)]), Q = At(ring[static_cast<std::size_t>(q)]);
        double const d = (P.x - Q.x) * (P.x - Q.x) + (P.y - Q.y) * (P.y - Q.y);
        return d * d <= 1e-12;
    }

    /// False when a piece was cut off.
    bool BuildConvexLoop(std::size_t entry) {
        if (loops.size() >= pool.size() || loops[entry].size() <= 3)
            return true;
        Ring const ring = loops[entry];
        int const n = static_cast<int>(ring.size());
        auto const mod = [n](int i) { return (i % n + n) % n; };
        enum { Seek, Extend, GrowTurn, GrowClose, GrowAnchor, Clear, Inside, Take, Cut } state = Seek;
        int c = 0, first = -1, start = -1, end = -1, scan = -1;
        while (state != Cut) {
            bool const growing = state == GrowTurn || state == GrowClose || state == GrowAnchor;
            double const t = state == GrowClose    ? Turn(ring, c, c + 1, start)
                             : state == GrowAnchor ? Turn(ring, c + 1, start, start + 1)
                             : state == Clear      ? Turn(ring, start, end, c)
                             : state == Inside     ? Turn(ring, scan, scan - 1, c)
                                                   : Turn(ring, c - 1, c, c + 1);
            bool const notch = t > -1e-6;
            if (state == Seek) {
                if (notch) {
                    first = start = c;
                    state = Extend;
                } else if (c == n - 1) {
                    return true;
                }
                c = mod(c + 1);
            } else if (state == Extend) {
                if (c == first)
                    return true;
                if (notch)
                    start = c;
                else
                    state = GrowTurn;
                c = mod(c + 1);
            } else if (growing && notch) {
                end = c;
                c = mod(c + 1);
                state = Clear;
            } else if (state == GrowTurn) {
                state = GrowClose;
            } else if (state == GrowClose) {
                state = GrowAnchor;
            } else if (state == GrowAnchor) {
                c = mod(c + 1);
                state = GrowTurn;
            } else if (state == Clear) {
                scan = end;
                state = notch ? Inside : Take;
            } else if (state == Inside) {
                bool const onEdge = !(t >= 1e-6) && !(t * t > 1e-12);
                if (!(t >= 1e-6) && (!onEdge || SamePoint(ring, c, scan) || SamePoint(ring, c, mod(scan - 1)))) {
                    state = Take;
                } else if ((scan = mod(scan - 1)) == start) {
                    end = mod(end - 1);
                    state = Clear;
                    if (mod(end - start) < 2) {
                        start = mod(start + 1);
                        c = mod(start + 1);
                        state = Extend;
                    }
                }
            } else if (state == Take) {
                c = mod(c + 1);
                state = c == start ? Cut : Clear;
            }
        }
        Ring piece, rest;
        for (int i = start; i != end; i = mod(i + 1))
            piece.push_back(ring[static_cast<std::size_t>(i)]);
        piece.push_back(ring[static_cast<std::size_t>(end)]);
        // What stays keeps its order in the list, so it starts at place 0 unless the piece ran over it.
        for (int i = end > start ? 0 : end; i < (end > start ? n : start + 1); ++i)
            if (!(i > start && i < end))
                rest.push_back(ring[static_cast<std::size_t>(i)]);
        piece.front().exterior = false;
        rest[end > start ? static_cast<std::size_t>(start) + 1 : 0].exterior = false;
        loops.push_back(piece);
        loops[entry] = rest;
        return false;
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
