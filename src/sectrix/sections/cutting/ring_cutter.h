#pragma once

#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cutting/piece_frame.h"
#include "sectrix/sections/cutting/place_set.h"
#include "sectrix/sections/cutting/scratch.h"
#include "sectrix/sections/cutting/turn.h"
#include "sectrix/sections/cutting/vertex_blocks.h"
#include "sectrix/sections/loop.h"

#include <cstddef>
#include <optional>
#include <vector>

/// \file
/// The cutting of one loop into convex pieces.

namespace qel::Sectrix {

/// A loop under the knife, as a ring from which vertices leave and which none ever enters.
///
/// A vertex is known by its number, its place in the loop as it was loaded; what is left is always in that order. A
/// piece is a chain: a run of vertices from a start to an end that the chord back to the start closes. Whether a
/// start gives a piece depends on the ring alone, so a start that gave none gives none again while certain
/// witnesses are all in the ring: its chain as it had grown, the vertex that ended the growth, and those that made
/// it shrink. So each start is tried once, and once more whenever one of its witnesses has left.
class RingCutter {
public:
    struct Chain {
        int m_start;
        int m_end;
    };

    /// \param memory  for all that the ring needs; must outlive it.
    explicit RingCutter(std::pmr::memory_resource* memory)
        : m_ring(memory), m_notches(memory), m_candidates(memory), m_watches(memory), m_shrinkers(memory),
          m_blocks(memory), m_corners(memory), m_triangle(memory), m_near(memory) {}

    /// Takes a loop's vertices, with their points in the same order, in place of what the ring held.
    void Load(std::vector<Vertex> const& vertices, Scratch::List<Vec<2, double>> const& points);

    /// The piece that the walk from the first notch on finds first; nothing when the ring is convex, has no more
    /// than three vertices, or cannot be cut.
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
        /// The first entry of `m_watches` for this vertex; -1 for none.
        int m_watch;
        /// How often this vertex, as a start, has failed or been tried again since; tells which watches are still
        /// good.
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

    int Grow(int start);
    bool IsLost(Chain const& chain);
    bool Outlasts(Point const& point, Chain const& chain) const;
    bool Shrink(Chain& chain);
    bool ShrinkFor(int number, Point const& point, Chain& chain);
    bool PassesEdges(Chain const& chain, Point const& point) const;
    bool ShrinkForNear(Chain& chain);
    bool MakeFrame();
    bool IsInChain(int number, Chain const& chain) const;
    void RememberFailure(int start, int grownEnd);
    void Unlink(Chain const& chain);
    void TryAgainWithout(int number);
    void UpdateNotch(int number);
    void UpdateCandidate(int number);

    /// True when the point lies in the piece or on its border, but at none of its corners. Most points lie beyond
    /// the chord.
    bool Contains(Chain const& chain, Point const& point) const {
        return IsNotch(At(chain.m_start), At(chain.m_end), point) && PassesEdges(chain, point);
    }
    bool IsNotchAt(int number) const;
    Point const& At(int number) const { return m_ring[static_cast<std::size_t>(number)].m_point; }
    int Next(int number) const { return m_ring[static_cast<std::size_t>(number)].m_next; }
    int Previous(int number) const { return m_ring[static_cast<std::size_t>(number)].m_previous; }

    Scratch::List<RingVertex> m_ring;
    /// The number of vertices that are left.
    std::size_t m_size = 0;
    /// The vertex at place 0 of what is left.
    int m_first = 0;
    /// The vertices whose corner is not strictly convex.
    PlaceSet m_notches;
    /// The starts that may give a piece: the next corner is strictly convex, and they are not known to fail.
    PlaceSet m_candidates;
    Scratch::List<Watch> m_watches;
    /// The vertices that made the chain of the present trial shrink, or the one that alone takes all of it.
    Scratch::List<int> m_shrinkers;

    /// The vertices by where they lie; empty for a tiny ring, and where points are not finite or so large that a
    /// product overflows.
    VertexBlocks m_blocks;
    /// Bounds on the rounding error of a turn value, and of a coordinate, anywhere in the ring.
    double m_turnError = 0.0, m_pointError = 0.0;
    /// The corners of the piece of the present trial as it had grown.
    Scratch::List<Point> m_corners;
    /// The first three of them.
    Scratch::List<Point> m_triangle;
    /// The least turn to the left at any corner of this piece, or of a shorter one from the same start.
    double m_leastTurn = 0.0;
    /// What lies around the piece; before that, around its first three corners.
    PieceFrame m_frame;
    /// The vertices outside the chain that may lie in the piece.
    Scratch::List<int> m_near;
};

} // namespace qel::Sectrix
