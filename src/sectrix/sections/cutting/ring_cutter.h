#pragma once

#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cutting/box_hierarchy.h"
#include "sectrix/sections/cutting/piece_frame.h"
#include "sectrix/sections/cutting/place_set.h"
#include "sectrix/sections/cutting/scratch.h"
#include "sectrix/sections/cutting/turn.h"
#include "sectrix/sections/loop.h"

#include <cstddef>
#include <optional>
#include <vector>

/// \file
/// The cutting of one loop into convex pieces.

namespace qel::Sectrix {

/// A loop from which convex pieces are cut: a ring of vertices, as a doubly linked list, from which vertices leave
/// and which none ever enters.
///
/// A vertex is known by its place in the loop as it was loaded; what is left is always in that order. A piece is a
/// chain: a run of vertices from a start to an end that the chord back to the start closes. From each start in turn
/// a chain grows as far as it stays strictly convex, and then shrinks until no other vertex lies in the piece. The
/// start fails when nothing is left.
///
/// The definition of the cutting tries all starts anew for each piece. Here a start that has failed is not tried
/// again while its witnesses are all in the ring: its chain as it had grown, the vertex that ended the growth, and
/// the vertices that made it shrink. A new trial would go as the last one went: no vertex ever enters the ring, so
/// the chain grows as before, and what has left since did not make it shrink. So each start is tried once, and
/// again when one of its witnesses has left.
class RingCutter {
public:
    struct Chain {
        int m_start;
        int m_end;
    };

    /// \param memory  for all that the ring needs; must outlive it.
    explicit RingCutter(Scratch& memory)
        : m_points(memory), m_ring(memory), m_reflex(memory), m_candidates(memory), m_watches(memory),
          m_shrinkers(memory), m_boxes(memory), m_corners(memory), m_triangle(memory), m_near(memory) {}

    /// Takes a loop's vertices, over this pool, in place of what the ring held.
    void Load(std::vector<Vertex> const& vertices, CSPositions const& pool);

    /// The piece that the walk from the first reflex vertex on finds first; nothing when the ring is convex, has no
    /// more than three vertices, or cannot be cut.
    std::optional<Chain> FindPiece();

    /// Takes a piece that was found out of the ring and appends its vertices to `piece`.
    void CutOff(Chain const& chain, Scratch::List<Vertex>& piece);

    /// Makes `rest` the vertices that are left, in order.
    void CopyRest(std::vector<Vertex>& rest) const;

private:
    using Point = Vec<2, double>;

    struct RingVertex {
        Point m_point;
        int m_previous, m_next;
        /// The first entry of `m_watches` in the list of this vertex; -1 for none.
        int m_firstWatch;
        /// Of this vertex as a start: how often it has failed, or become a candidate again since. A watch is good
        /// while this is what it was when the watch was made.
        int m_trial;
        Vertex m_vertex{-1, false};
        bool m_isInRing;
    };

    /// A start that has failed, in the list of one of its witnesses.
    struct Watch {
        int m_start;
        int m_trial;
        int m_next;
    };

    void MakeBoxes();
    int Grow(int start);
    bool IsLost(Chain const& chain);
    bool Outlasts(Point const& point, Chain const& chain) const;
    bool Shrink(Chain& chain);
    bool ShrinkFor(int place, Point const& point, Chain& chain);
    bool PassesEdges(Chain const& chain, Point const& point) const;
    bool ShrinkInAnyOrder(Chain& chain);
    bool MakeFrame(Scratch::List<Point> const& corners, double leastTurn);
    bool IsInChain(int place, Chain const& chain) const;
    void RememberFailure(int start, int grownEnd);
    void Unlink(Chain const& chain);
    void TryAgainWithout(int place);
    void UpdateReflex(int place);
    void UpdateCandidate(int place);

    /// True when the point lies in the piece or on its border, but at none of its corners. The chord is tested
    /// first since most points lie beyond it.
    bool Contains(Chain const& chain, Point const& point) const {
        return IsReflex(At(chain.m_start), At(chain.m_end), point) && PassesEdges(chain, point);
    }
    bool IsReflexAt(int place) const;
    RingVertex& VertexAt(int place) { return m_ring[static_cast<std::size_t>(place)]; }
    RingVertex const& VertexAt(int place) const { return m_ring[static_cast<std::size_t>(place)]; }
    Point const& At(int place) const { return VertexAt(place).m_point; }
    int Next(int place) const { return VertexAt(place).m_next; }
    int Previous(int place) const { return VertexAt(place).m_previous; }

    /// The points of the loop as it was loaded.
    Scratch::List<Point> m_points;
    Scratch::List<RingVertex> m_ring;
    /// The place of vertices that are left.
    std::size_t m_size = 0;
    /// The first vertex of what is left.
    int m_first = 0;
    /// The vertices that are reflex or straight: all whose corner is not strictly convex.
    PlaceSet m_reflex;
    /// The starts that may give a piece: the next corner is strictly convex, and they are not known to fail.
    PlaceSet m_candidates;
    Scratch::List<Watch> m_watches;
    /// The vertices that made the chain of the present trial shrink, or the one that alone shrinks it to nothing.
    Scratch::List<int> m_shrinkers;

    /// The vertices by where they lie; empty for a small ring, and where points are not finite or so large that a
    /// product overflows. Every vertex outside the chain is looked at then.
    BoxHierarchy m_boxes;
    /// Bounds on the rounding error of a turn value, and of a coordinate, anywhere in the ring.
    double m_turnError = 0.0, m_pointError = 0.0;
    /// The corners of the piece of the present trial as it had grown.
    Scratch::List<Point> m_corners;
    /// The first three of them.
    Scratch::List<Point> m_triangle;
    /// The least turn to the left at any corner of this piece, or of a shorter one from the same start.
    double m_leastTurn = 0.0;
    /// The region around the piece; before that, around its first three corners.
    PieceFrame m_frame;
    /// The vertices outside the chain that lie in the frame.
    Scratch::List<int> m_near;
};

} // namespace qel::Sectrix
