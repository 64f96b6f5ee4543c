#pragma once

#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cutting/lowest_bit.h"
#include "sectrix/sections/cutting/piece_frame.h"
#include "sectrix/sections/cutting/scratch.h"

#include <algorithm>
#include <array>
#include <cstddef>
#include <cstdint>

/// \file
/// The vertices of a ring by where they lie.

namespace qel::Sectrix {

/// Four coordinates of 15 bits in a word, in lanes of 16 bits each, so that one subtraction compares all four: SIMD
/// within a register (SWAR). The highest bit of a lane is clear in a coordinate, is set before the subtraction, and
/// is cleared by it where the coordinate is less.
class Lanes {
public:
    static constexpr std::size_t kCount = 4;
    /// The greatest coordinate.
    static constexpr std::uint64_t kGreatest = 0x7FFF;
    /// The highest bit of each lane.
    static constexpr std::uint64_t kHighest = 0x8000800080008000;

    Lanes() = default;
    /// The same coordinate in each lane.
    explicit Lanes(std::uint64_t coordinate) : m_word(coordinate * 0x0001000100010001) {}

    void Set(std::size_t lane, std::uint64_t coordinate) {
        m_word = (m_word & ~(std::uint64_t{0xFFFF} << 16 * lane)) | coordinate << 16 * lane;
    }
    std::uint64_t Get(std::size_t lane) const { return m_word >> 16 * lane & 0xFFFF; }
    /// The highest bit of each lane is set where this coordinate is at least that of `other`; the rest is noise.
    std::uint64_t AtLeast(Lanes other) const { return (m_word | kHighest) - other.m_word; }

private:
    std::uint64_t m_word = 0;
};

/// A hierarchy of bounding boxes over the vertices of a ring, to find those that lie in a frame. Each 32 vertices
/// are a block, each 32 blocks a larger block and so on; each block has a box that holds what is left of its
/// vertices.
///
/// What makes a block is the order of the vertices. Most rings stay in one region for some while, so that the order
/// of the ring will do; a search then gives vertices in that order, too. Where the blocks overlap too much, as
/// those of long thin teeth, the vertices are put into the order of a k-d tree: halved along the longer side of
/// their box again and again. A vertex is known by its place in the ring; where it stands in the order is its slot.
///
/// Coordinates are compared on a grid over all vertices: rounding to the grid never falls when a coordinate rises,
/// so that whatever lies between two coordinates is between them on the grid, too.
class BoxHierarchy {
public:
    using Point = Vec<2, double>;
    using Box = BBox<2, double>;

    explicit BoxHierarchy(Scratch& memory)
        : m_points(memory), m_slots(memory), m_lanes(memory), m_counts(memory), m_boxes(memory),
          m_boxLanes(memory) {}

    /// Holds these points, which must be finite, as those of the places 0, 1, 2 and so on, instead of all others;
    /// there must be one.
    void Reset(Scratch::List<Point> const& points);
    /// Holds nothing.
    void Clear() { m_points.clear(); }
    bool IsEmpty() const { return m_points.empty(); }
    /// The box around all points that were given to `Reset`.
    Box const& Whole() const { return m_whole; }
    /// True when there are boxes, which is when a frame needs half-planes.
    bool HasBoxes() const { return m_height > 0; }

    /// Takes the vertex at a place out, which must be in.
    void Remove(int place);

    /// True when a search gives vertices in the order of their places.
    bool IsInRingOrder() const { return m_isInRingOrder; }

    /// Calls `visit` with the places and points of all vertices inside the frame, and of some near it, until it
    /// returns false. False then.
    template <class Visitor>
    bool Visit(PieceFrame const& frame, Visitor const& visit) const {
        return Visit(frame, 0, static_cast<int>(m_points.size()), visit);
    }

    /// The same for the slots `begin` to `end` - 1. In ring order slot and place are the same.
    template <class Visitor>
    bool Visit(PieceFrame const& frame, int begin, int end, Visitor const& visit) const {
        if (begin >= end)
            return true;
        auto const& box = frame.Bounds();
        BoxLanes const sought{Lanes(OnGrid(box.m_min[0], 0)), Lanes(OnGrid(box.m_min[1], 1)),
                              Lanes(OnGrid(box.m_max[0], 0)), Lanes(OnGrid(box.m_max[1], 1))};
        Range const range{static_cast<std::size_t>(begin), static_cast<std::size_t>(end)};
        return m_height > 0 ? VisitBlocks(m_height, range, frame, sought, visit)
                            : VisitPoints(range, sought, visit);
    }

private:
    struct PlacedPoint {
        Point m_point;
        int m_place;
    };

    struct Range {
        std::size_t m_begin, m_end;

        bool Has(std::size_t slot) const { return slot >= m_begin && slot < m_end; }
    };

    /// Four points on the grid.
    struct PointLanes {
        Lanes m_x, m_y;
    };

    /// Four boxes on the grid, or the same one four times.
    struct BoxLanes {
        Lanes m_minX, m_minY, m_maxX, m_maxY;
    };

    /// How many vertices one of the smallest blocks has now, and had when its box was last made.
    struct Count {
        int m_now, m_then;
    };

    /// A block holds 2 to this power of vertices, or of smaller blocks.
    static constexpr std::size_t kBlockShift = 5;
    static constexpr std::size_t kBlockSize = std::size_t{1} << kBlockShift;
    /// Up to this many vertices, or blocks, are looked at one by one, with no blocks around them.
    static constexpr std::size_t kTopSize = 128;
    /// The x on the grid of what has been taken out; that of all else is less.
    static constexpr std::uint64_t kGone = Lanes::kGreatest;

    /// The coordinate on the grid; it never falls when `x` rises. The infinite ones of an empty box go to an end.
    std::uint64_t OnGrid(double x, std::size_t axis) const {
        double const steps = (x - m_whole.m_min[axis]) * m_stepsPerUnit[axis];
        double const most = static_cast<double>(kGone - 1);
        return steps > 0.0 ? static_cast<std::uint64_t>(steps < most ? steps : most) : 0;
    }

    /// \param range  of slots.
    template <class Visitor>
    bool VisitPoints(Range const& range, BoxLanes const& sought, Visitor const& visit) const {
        for (std::size_t word = range.m_begin / Lanes::kCount; word * Lanes::kCount < range.m_end; ++word) {
            auto const& [x, y] = m_lanes[word];
            auto hits = x.AtLeast(sought.m_minX) & sought.m_maxX.AtLeast(x) & y.AtLeast(sought.m_minY) &
                        sought.m_maxY.AtLeast(y) & Lanes::kHighest;
            for (; hits != 0; hits &= hits - 1) {
                std::size_t const slot = word * Lanes::kCount + LowestBit(hits) / 16;
                if (range.Has(slot) && !visit(m_points[slot].m_place, m_points[slot].m_point))
                    return false;
            }
        }
        return true;
    }

    /// \param height  of the blocks; those of vertices have 1.
    /// \param range   of slots, not empty.
    template <class Visitor>
    bool VisitBlocks(std::size_t height, Range const& range, PieceFrame const& frame, BoxLanes const& sought,
                     Visitor const& visit) const {
        std::size_t const shift = kBlockShift * height;
        std::size_t const first = m_firstBlock[height];
        Range const blocks{first + (range.m_begin >> shift), first + ((range.m_end - 1) >> shift) + 1};
        for (std::size_t word = blocks.m_begin / Lanes::kCount; word * Lanes::kCount < blocks.m_end; ++word) {
            auto const& box = m_boxLanes[word];
            auto hits = box.m_maxX.AtLeast(sought.m_minX) & sought.m_maxX.AtLeast(box.m_minX) &
                        box.m_maxY.AtLeast(sought.m_minY) & sought.m_maxY.AtLeast(box.m_minY) & Lanes::kHighest;
            for (; hits != 0; hits &= hits - 1) {
                std::size_t const block = word * Lanes::kCount + LowestBit(hits) / 16;
                if (!blocks.Has(block) || frame.IsBeyond(m_boxes[block]))
                    continue;
                std::size_t const begin = (block - first) << shift;
                Range const inside{std::max(range.m_begin, begin),
                                   std::min(range.m_end, begin + (std::size_t{1} << shift))};
                if (!(height > 1 ? VisitBlocks(height - 1, inside, frame, sought, visit)
                                 : VisitPoints(inside, sought, visit)))
                    return false;
            }
        }
        return true;
    }

    /// What is in a block: slots, or blocks of the next lower height.
    Range Inside(std::size_t height, std::size_t block) const {
        std::size_t const first = height > 1 ? m_firstBlock[height - 1] : 0;
        std::size_t const end = height > 1 ? m_firstBlock[height] : m_points.size();
        std::size_t const begin = first + ((block - m_firstBlock[height]) << kBlockShift);
        return {begin, std::min(end, begin + kBlockSize)};
    }

    void MakeLanes();
    void MakeBlocks();
    bool IsCrowded() const;
    void OrderByHalving(Range const& range);
    Box BoxOf(std::size_t height, std::size_t block) const;
    void SetBox(std::size_t block, Box const& box);

    Box m_whole;
    double m_stepsPerUnit[2] = {};
    /// All vertices by their slots, also those that have been taken out, and the slot of each place.
    Scratch::List<PlacedPoint> m_points;
    Scratch::List<int> m_slots;
    /// The vertices on the grid, by their slots.
    Scratch::List<PointLanes> m_lanes;
    bool m_isInRingOrder = true;
    /// Of the smallest blocks.
    Scratch::List<Count> m_counts;
    /// Boxes around at least what is left in each block, by height, and the same on the grid.
    Scratch::List<Box> m_boxes;
    Scratch::List<BoxLanes> m_boxLanes;
    /// Where the blocks of each height begin, at the start of a word. Five heights hold 2^31 points.
    std::array<std::size_t, 8> m_firstBlock{};
    /// The height of the largest blocks; 0 when there are none.
    std::size_t m_height = 0;
};

} // namespace qel::Sectrix
