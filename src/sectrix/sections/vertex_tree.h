#pragma once

#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/piece_frame.h"
#include "sectrix/sections/scratch.h"

#include <cstddef>

/// \file
/// Vertices by where they lie.

namespace qel::Sectrix {

/// A binary tree of boxes over points: the leaves hold a few points each, every split is in half along the longer
/// axis, and each box is no larger than its points. So it is indifferent to how the points lie, and flat where they
/// are.
class VertexTree {
public:
    using Point = Vec<2, double>;
    using Box = BBox<2, double>;

    explicit VertexTree(std::pmr::memory_resource* memory)
        : m_entries(memory), m_ranges(memory), m_leafOf(memory), m_boxes(memory) {}

    /// Holds these points, which must be finite, under the numbers 0, 1, 2 and so on, in place of all others.
    void Reset(Scratch::List<Point> const& points);
    /// Holds nothing.
    void Clear() { m_leaves = 0; }
    bool IsEmpty() const { return m_leaves == 0; }
    /// The box around all points.
    Box const& Whole() const { return m_boxes[1]; }

    /// Takes a point out.
    void Remove(int number);

    /// Calls `visit` with the numbers of all points inside the frame, and some near it, in no order, until it
    /// returns false. False then.
    template <class Visitor>
    bool Visit(PieceFrame const& frame, Visitor visit) const {
        // Depth first: left children on the way down, then the next node that is not below what has been seen.
        for (std::size_t node = 1; node > 0;) {
            bool const isBeyond = frame.IsBeyond(m_boxes[node]);
            if (!isBeyond && node < m_leaves) {
                node *= 2;
                continue;
            }
            if (!isBeyond && !VisitLeaf(m_ranges[node - m_leaves], frame, visit))
                return false;
            while (node % 2 == 1)
                node /= 2;
            node = node > 0 ? node + 1 : 0;
        }
        return true;
    }

private:
    struct Entry {
        Point m_point;
        int m_number;
    };

    /// A range of entries.
    struct Leaf {
        std::size_t m_begin, m_end;
    };

    template <class Visitor>
    bool VisitLeaf(Leaf const& leaf, PieceFrame const& frame, Visitor const& visit) const {
        for (std::size_t i = leaf.m_begin; i < leaf.m_end; ++i)
            if (!frame.IsBeside({m_entries[i].m_point, m_entries[i].m_point}) && !visit(m_entries[i].m_number))
                return false;
        return true;
    }

    Box BoxOf(Leaf const& range) const;
    void Split(std::size_t node, Leaf const& range);

    /// Leaf by leaf.
    Scratch::List<Entry> m_entries;
    /// The number of leaves, a power of two; 0 when nothing is held.
    std::size_t m_leaves = 0;
    Scratch::List<Leaf> m_ranges;
    /// The leaf of each number.
    Scratch::List<std::size_t> m_leafOf;
    /// The root at 1, the children of node n at 2n and 2n + 1, the leaves from `m_leaves` on.
    Scratch::List<Box> m_boxes;
};

} // namespace qel::Sectrix
