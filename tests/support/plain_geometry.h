#pragma once

#include "support/shapes.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <tuple>
#include <vector>

/// \file
/// The slow, obvious twin of the check of geometry: all pairs, in whole numbers. It shares no code with the check
/// and judges it, on shapes whose coordinates are small whole numbers.

namespace plain {

struct Node {
    std::int64_t x = 0, y = 0;
    int loop = 0, vertex = 0;
    std::size_t number = 0; // of the corner, or of the edge that it lies inside
    bool isCorner = true;
};

inline bool IsSame(Node const& a, Node const& b) {
    return a.x == b.x && a.y == b.y;
}
/// Twice the area of the triangle, positive when `b` lies to the left of the way from `o` to `a`.
inline std::int64_t Cross(Node const& o, Node const& a, Node const& b) {
    return (a.x - o.x) * (b.y - o.y) - (a.y - o.y) * (b.x - o.x);
}
/// True when `p` lies on the edge from `a` to `b`, but at neither end.
inline bool IsBetween(Node const& a, Node const& b, Node const& p) {
    return Cross(a, b, p) == 0 && !IsSame(p, a) && !IsSame(p, b) &&
           (p.x - a.x) * (p.x - b.x) + (p.y - a.y) * (p.y - b.y) < 0;
}

class GeometryCheck {
public:
    explicit GeometryCheck(shapes::Shape const& shape) {
        for (std::size_t loop = 0; loop < shape.loops.size(); ++loop)
            Read(shape, int(loop));
        for (auto const& ring : m_rings)
            m_split.push_back(Split(ring));
        for (auto const& ring : m_rings)
            Spikes(ring);
        Crossings();
        Encounters();
        for (std::size_t loop = 0; loop < m_rings.size(); ++loop)
            Orient(int(loop));
        for (std::size_t hole = 1; hole < m_rings.size(); ++hole)
            for (std::size_t outer = 0; outer < m_rings.size(); ++outer)
                Nest(int(hole), int(outer));
        std::sort(m_lines.begin(), m_lines.end());
    }

    /// A line for each finding: code, loop, vertex, and the point of a contact.
    std::vector<std::string> const& Lines() const { return m_lines; }

    static std::string Line(std::string const& code, int loop, int vertex, double x, double y) {
        auto const text = [](double value) { return " " + std::to_string(std::llround(value * 3e6 + 0.1)); };
        return code + " " + std::to_string(loop) + " " + std::to_string(vertex) + text(x) + text(y);
    }

private:
    using Ring = std::vector<Node>;

    void Tell(std::string const& code, int loop, int vertex = -1) {
        m_lines.push_back(Line(code, loop, vertex, 0, 0));
    }

    /// Makes the ring of a loop, without edges that have no length; empty where fewer than three vertices are left.
    void Read(shapes::Shape const& shape, int loop) {
        Ring read, ring;
        auto const& indices = shape.loops[std::size_t(loop)];
        for (std::size_t i = 0; i < indices.size(); ++i) {
            if (indices[i] < 0 || indices[i] >= int(shape.points.size())) {
                Tell("index-out-of-range", loop, int(i));
                continue;
            }
            auto const& point = shape.points[std::size_t(indices[i])];
            read.push_back({std::int64_t(point.x), std::int64_t(point.y), loop, int(i), 0, true});
        }
        for (auto const& node : read)
            if (read.size() >= 3 && !ring.empty() && IsSame(ring.back(), node))
                Tell("edge-without-length", loop, node.vertex);
            else
                ring.push_back(node);
        for (; read.size() >= 3 && ring.size() > 1 && IsSame(ring.front(), ring.back()); ring.pop_back())
            Tell("edge-without-length", loop, ring[0].vertex);
        if (ring.size() < 3) {
            Tell(read.size() < 3 ? "loop-too-short" : "loop-without-area", loop);
            ring.clear();
        }
        for (auto& node : ring)
            node.number = m_count++;
        m_rings.push_back(ring);
    }

    /// The ring with a node wherever any corner lies inside an edge.
    Ring Split(Ring const& ring) const {
        Ring split;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            auto const &a = ring[i], &b = ring[(i + 1) % ring.size()];
            Ring inside;
            for (auto const& other : m_rings)
                for (auto node : other)
                    if (IsBetween(a, b, node)) {
                        node.loop = a.loop, node.vertex = a.vertex, node.number = a.number, node.isCorner = false;
                        inside.push_back(node);
                    }
            auto const distance = [&a](Node const& node) {
                return std::abs(node.x - a.x) + std::abs(node.y - a.y);
            };
            std::sort(inside.begin(), inside.end(),
                      [&](Node const& one, Node const& other) { return distance(one) < distance(other); });
            inside.erase(std::unique(inside.begin(), inside.end(), IsSame), inside.end());
            split.push_back(a);
            split.insert(split.end(), inside.begin(), inside.end());
        }
        return split;
    }

    /// Corners where the loop turns back the way that it came.
    void Spikes(Ring const& ring) {
        for (std::size_t i = 0; i < ring.size(); ++i) {
            auto const &a = ring[(i + ring.size() - 1) % ring.size()], &b = ring[i],
                       &c = ring[(i + 1) % ring.size()];
            if (Cross(b, a, c) == 0 && (a.x - b.x) * (c.x - b.x) + (a.y - b.y) * (c.y - b.y) > 0)
                Tell("spike", b.loop, b.vertex);
        }
    }

    enum Kind { Crossing, TouchEdge, TouchCorner, Back, Along };

    void Contact(Kind kind, Node const& first, Node const& second, double x, double y) {
        if (first.loop == second.loop) {
            char const* const codes[] = {"edges-cross", "edges-touch", "point-repeated", "edges-run-back",
                                         "edges-overlap"};
            m_lines.push_back(Line(codes[kind], first.loop, first.vertex, x, y));
        } else {
            char const* const codes[] = {"holes-cross", "holes-touch", "hole-crosses-outline",
                                         "hole-touches-outline"};
            auto const* const code = codes[(kind != Crossing) + (first.loop == 0 ? 2 : 0)];
            m_lines.push_back(Line(code, second.loop, second.vertex, x, y));
        }
        if (kind == Crossing)
            m_crossed[{first.loop, second.loop}] = true;
    }

    /// All pairs of edges that cross inside both.
    void Crossings() {
        std::vector<std::pair<Node, Node>> edges;
        for (auto const& ring : m_rings)
            for (std::size_t i = 0; i < ring.size(); ++i)
                edges.emplace_back(ring[i], ring[(i + 1) % ring.size()]);
        for (std::size_t i = 0; i < edges.size(); ++i)
            for (std::size_t j = i + 1; j < edges.size(); ++j) {
                auto const& [a, b] = edges[i];
                auto const& [c, d] = edges[j];
                auto const ca = Cross(c, d, a), cb = Cross(c, d, b), ac = Cross(a, b, c), ad = Cross(a, b, d);
                if (!((ca > 0 && cb < 0) || (ca < 0 && cb > 0)) || !((ac > 0 && ad < 0) || (ac < 0 && ad > 0)))
                    continue;
                double const t = double(ca) / double(ca - cb);
                Contact(Crossing, a, c, double(a.x) + t * double(b.x - a.x), double(a.y) + t * double(b.y - a.y));
            }
    }

    struct At { // a node of a split ring
        Ring const* ring;
        std::size_t place;
        Node const& operator*() const { return (*ring)[place]; }
        At Step(int by) const {
            return {ring, (place + ring->size() + std::size_t(by + int(ring->size()))) % ring->size()};
        }
    };

    /// By how much a ray turns counter-clockwise from the way ahead, for comparing.
    static bool TurnsLess(Node const& o, Node const& ahead, Node const& one, Node const& other) {
        auto const isFar = [&](Node const& node) {
            auto const cross = Cross(o, ahead, node);
            auto const dot = (ahead.x - o.x) * (node.x - o.x) + (ahead.y - o.y) * (node.y - o.y);
            return cross < 0 || (cross == 0 && dot < 0);
        };
        return isFar(one) != isFar(other) ? isFar(other) : Cross(o, one, other) > 0;
    }

    static bool IsLeft(At const& strand, Node const& target) {
        auto const ahead = strand.Step(1), back = strand.Step(-1);
        return !IsSame(*ahead, *back) && TurnsLess(*strand, *ahead, target, *back);
    }

    /// All pairs of nodes at one point, of which one at least is a corner: there two edges touch, cross, or begin
    /// to run along each other. Loops that are the same all the way round have no such beginning and are told last.
    void Encounters() {
        std::vector<At> nodes;
        for (auto const& ring : m_split)
            for (std::size_t i = 0; i < ring.size(); ++i)
                nodes.push_back({&ring, i});
        std::stable_sort(nodes.begin(), nodes.end(), [](At const& one, At const& other) {
            return std::tie((*one).number, (*one).isCorner) < std::tie((*other).number, (*other).isCorner);
        });
        std::map<std::pair<int, int>, std::pair<bool, std::pair<At, At>>> runs;
        for (std::size_t i = 0; i < nodes.size(); ++i)
            for (std::size_t j = i + 1; j < nodes.size(); ++j)
                if (IsSame(*nodes[i], *nodes[j]) && ((*nodes[i]).isCorner || (*nodes[j]).isCorner))
                    Encounter(nodes[i], nodes[j], runs);
        for (auto const& [loops, run] : runs) {
            auto const& [doPart, nodesThere] = run;
            auto const& [u, v] = nodesThere;
            if (!doPart)
                Contact(IsSame(*u.Step(1), *v.Step(1)) ? Along : Back, *u, *v, double((*u).x), double((*u).y));
        }
    }

    /// Tells how the strand through `u` and the one through `v` meet: in this point alone, or in a run of common
    /// edges, which counts once, at the end whose nodes come first.
    /// \param runs  by pair of loops, whether a run has an end, and where it was first met.
    template <class Runs>
    void Encounter(At const& u, At const& v, Runs& runs) {
        auto const isOn = [&u](At const& node) { return IsSame(*node, *u.Step(1)) || IsSame(*node, *u.Step(-1)); };
        auto const back = v.Step(-1), ahead = v.Step(1);
        auto const x = double((*u).x), y = double((*u).y);
        if (!isOn(back) && !isOn(ahead)) {
            bool const isCross = IsLeft(u, *back) != IsLeft(u, *ahead);
            bool const areCorners = (*u).isCorner && (*v).isCorner;
            return Contact(isCross ? Crossing : areCorners ? TouchCorner : TouchEdge, *u, *v, x, y);
        }
        auto& run = runs.try_emplace({(*u).loop, (*v).loop}, false, std::make_pair(u, v)).first->second;
        if (isOn(back) && isOn(ahead))
            return;
        run.first = true;
        int const vWay = isOn(back) ? -1 : 1, uWay = IsSame(*v.Step(vWay), *u.Step(1)) ? 1 : -1;
        At a = u, b = v;
        do {
            a = a.Step(uWay), b = b.Step(vWay);
            if (a.ring == b.ring && a.place == b.place)
                return; // the tip of a spike
            if (!IsSame(*b.Step(vWay), *a.Step(uWay)) && IsSame(*b.Step(vWay), *a.Step(-uWay)))
                return; // turns back in a spike
        } while (IsSame(*a.Step(uWay), *b.Step(vWay)));
        auto const key = [](At const& one, At const& other) {
            auto const p = std::tie((*one).number, (*one).isCorner),
                       q = std::tie((*other).number, (*other).isCorner);
            return p < q ? std::make_tuple(p, q) : std::make_tuple(q, p);
        };
        if (key(a, b) < key(u, v))
            return;
        bool const isCross = IsLeft(u, *v.Step(-vWay)) != IsLeft(a, *b.Step(vWay));
        Contact(isCross ? Crossing : uWay == vWay ? Along : Back, *u, *v, x, y);
    }

    /// The sense of a loop that does not cross itself, by its area.
    void Orient(int loop) {
        auto const& ring = m_rings[std::size_t(loop)];
        std::int64_t area = 0;
        for (std::size_t i = 2; i < ring.size(); ++i)
            area += Cross(ring[0], ring[i - 1], ring[i]);
        if (ring.empty() || m_crossed.count({loop, loop}))
            return;
        if (area == 0)
            Tell("loop-without-area", loop);
        else if ((area > 0) != (loop == 0))
            Tell(loop == 0 ? "outline-clockwise" : "hole-counter-clockwise", loop);
    }

    /// Where a hole lies, by its first corner, or else middle of an edge, that is not on the outer loop.
    void Nest(int hole, int outer) {
        auto const &ring = m_rings[std::size_t(hole)], &around = m_rings[std::size_t(outer)];
        if (hole == outer || ring.empty() || around.empty() || m_crossed.count(std::minmax(hole, outer)))
            return;
        for (int const middles : {0, 1}) // coordinates doubled, so that middles are whole
            for (std::size_t i = 0; i < ring.size(); ++i) {
                auto const &a = ring[i], &b = middles ? ring[(i + 1) % ring.size()] : a;
                int const where = Locate({a.x + b.x, a.y + b.y}, around);
                if (where != 0) {
                    if (where > 0 ? outer > 0 : outer == 0)
                        Tell(outer == 0 ? "hole-outside" : "hole-inside-hole", hole);
                    return;
                }
            }
        if (outer < hole)
            Tell(outer == 0 ? "hole-on-outline" : "hole-inside-hole", hole);
    }

    /// 1 inside, 0 on, -1 outside.
    static int Locate(Node const& twice, Ring const& ring) {
        int where = -1;
        for (std::size_t i = 0; i < ring.size(); ++i) {
            auto const &p = ring[i], &q = ring[(i + 1) % ring.size()];
            Node const a{2 * p.x, 2 * p.y}, b{2 * q.x, 2 * q.y};
            if (IsSame(a, twice) || IsBetween(a, b, twice))
                return 0;
            if ((a.y > twice.y) != (b.y > twice.y) && (Cross(a, b, twice) > 0) == (b.y > a.y))
                where = -where;
        }
        return where;
    }

    std::size_t m_count = 0;
    std::vector<Ring> m_rings, m_split;
    std::map<std::pair<int, int>, bool> m_crossed;
    std::vector<std::string> m_lines;
};

} // namespace plain
