#include "sectrix/sections/cutting/box_hierarchy.h"
#include "sectrix/foundation/detail/strict_arithmetic.h"

#include <cassert>
#include <cmath>

namespace qel::Sectrix {

namespace {

/// As many blocks as may lie over a point on average when they are in the order of the ring.
double const kCrowdLimit = 8.0;

} // namespace

void BoxHierarchy::Reset(Scratch::List<Point> const& points) {
    assert(!points.empty());
    m_points.clear();
    m_points.reserve(points.size());
    m_whole = {};
    for (auto const& point : points) {
        m_points.push_back({point, static_cast<int>(m_points.size())});
        assert(std::isfinite(point[0]) && std::isfinite(point[1]));
        m_whole.Widen(point);
    }
    for (std::size_t axis = 0; axis < 2; ++axis) {
        double const extent = m_whole.m_max[axis] - m_whole.m_min[axis];
        // Never infinite. Where an extent is so small, the whole of it is one step.
        m_stepsPerUnit[axis] = extent > 1e-290 ? static_cast<double>(kGone) / extent : 0.0;
    }
    MakeLanes();
    MakeBlocks();
    m_isInRingOrder = !IsCrowded();
    if (!m_isInRingOrder) {
        OrderByHalving({0, m_points.size()});
        MakeLanes();
        MakeBlocks();
    }
}

/// Puts the points on the grid.
void BoxHierarchy::MakeLanes() {
    m_lanes.clear();
    m_lanes.reserve((m_points.size() - 1) / Lanes::kCount + 1);
    m_slots.resize(m_points.size());
    for (std::size_t begin = 0; begin < m_points.size(); begin += Lanes::kCount) {
        PointLanes lanes{Lanes(kGone), Lanes(kGone)};
        for (std::size_t slot = begin; slot < std::min(begin + Lanes::kCount, m_points.size()); ++slot) {
            auto const& [point, place] = m_points[slot];
            lanes.m_x.Set(slot - begin, OnGrid(point[0], 0));
            lanes.m_y.Set(slot - begin, OnGrid(point[1], 1));
            m_slots[static_cast<std::size_t>(place)] = static_cast<int>(slot);
        }
        m_lanes.push_back(lanes);
    }
}

/// Makes the blocks from the order of the points.
void BoxHierarchy::MakeBlocks() {
    m_height = 0;
    m_boxes.clear();
    m_boxLanes.clear();
    BoxLanes const none{Lanes(kGone), Lanes(kGone), Lanes(0), Lanes(0)};
    for (std::size_t count = m_points.size(); count > kTopSize;) {
        count = ((count - 1) >> kBlockShift) + 1;
        std::size_t const first = m_boxes.size();
        m_firstBlock[++m_height] = first;
        m_boxLanes.resize(m_boxLanes.size() + (count - 1) / Lanes::kCount + 1, none);
        m_boxes.resize(m_boxLanes.size() * Lanes::kCount);
        for (std::size_t block = first; block < first + count; ++block)
            SetBox(block, BoxOf(m_height, block));
    }
    if (m_height == 0)
        return;
    m_counts.clear();
    for (std::size_t begin = 0; begin < m_points.size(); begin += kBlockSize) {
        int const size = static_cast<int>(std::min(kBlockSize, m_points.size() - begin));
        m_counts.push_back({size, size});
    }
}

/// True when too many of the smallest blocks lie over each other.
bool BoxHierarchy::IsCrowded() const {
    if (m_height == 0)
        return false;
    auto const area = [](Box const& box) { return (box.m_max[0] - box.m_min[0]) * (box.m_max[1] - box.m_min[1]); };
    double sum = 0.0;
    for (std::size_t block = 0; block < m_counts.size(); ++block)
        sum += area(m_boxes[block]);
    return sum > kCrowdLimit * area(m_whole);
}

/// Puts a range of slots into the order of a k-d tree, so that its smallest blocks lie apart: it is halved along
/// the longer side of its box, between two blocks, and each half likewise.
void BoxHierarchy::OrderByHalving(Range const& range) {
    std::size_t const size = range.m_end - range.m_begin;
    if (size <= kBlockSize)
        return;
    Box box;
    for (std::size_t slot = range.m_begin; slot < range.m_end; ++slot)
        box.Widen(m_points[slot].m_point);
    std::size_t const axis = box.m_max[0] - box.m_min[0] >= box.m_max[1] - box.m_min[1] ? 0 : 1;
    std::size_t const middle = range.m_begin + (size / 2 + kBlockSize - 1) / kBlockSize * kBlockSize;
    auto const at = [this](std::size_t slot) { return m_points.begin() + static_cast<std::ptrdiff_t>(slot); };
    std::nth_element(
        at(range.m_begin), at(middle), at(range.m_end),
        [axis](PlacedPoint const& a, PlacedPoint const& b) { return a.m_point[axis] < b.m_point[axis]; });
    OrderByHalving({range.m_begin, middle});
    OrderByHalving({middle, range.m_end});
}

void BoxHierarchy::Remove(int place) {
    auto const slot = static_cast<std::size_t>(m_slots[static_cast<std::size_t>(place)]);
    assert(m_lanes[slot / Lanes::kCount].m_x.Get(slot % Lanes::kCount) != kGone);
    m_lanes[slot / Lanes::kCount].m_x.Set(slot % Lanes::kCount, kGone);
    if (m_height == 0)
        return;
    // A box is made anew whenever half of its vertices have left, which costs little for each of them.
    auto& count = m_counts[slot >> kBlockShift];
    if (2 * --count.m_now > count.m_then)
        return;
    count.m_then = count.m_now;
    for (std::size_t height = 1; height <= m_height; ++height) {
        std::size_t const block = m_firstBlock[height] + (slot >> (kBlockShift * height));
        SetBox(block, BoxOf(height, block));
    }
}

/// The box around what is left in a block.
BoxHierarchy::Box BoxHierarchy::BoxOf(std::size_t height, std::size_t block) const {
    Box box;
    auto const [begin, end] = Inside(height, block);
    for (std::size_t i = begin; i < end; ++i)
        if (height > 1)
            box.Widen(m_boxes[i]);
        else if (m_lanes[i / Lanes::kCount].m_x.Get(i % Lanes::kCount) != kGone)
            box.Widen(m_points[i].m_point);
    return box;
}

void BoxHierarchy::SetBox(std::size_t block, Box const& box) {
    m_boxes[block] = box;
    auto& lanes = m_boxLanes[block / Lanes::kCount];
    std::size_t const lane = block % Lanes::kCount;
    lanes.m_minX.Set(lane, OnGrid(box.m_min[0], 0));
    lanes.m_minY.Set(lane, OnGrid(box.m_min[1], 1));
    lanes.m_maxX.Set(lane, OnGrid(box.m_max[0], 0));
    lanes.m_maxY.Set(lane, OnGrid(box.m_max[1], 1));
}

} // namespace qel::Sectrix
