#include "sectrix/foundation/detail/position_arithmetic.h"
#include "sectrix/mesh/mesh.h"

#include <algorithm>
#include <array>
#include <cmath>
#include <cstring>
#include <limits>
#include <utility>

namespace qel::Sectrix {

namespace {

using Index = std::uint32_t;

/// Stands where there is no index: a sentinel. It is greater than every index, so that `std::min` of an index and
/// of this is the index, and a search for the least index may begin with it.
constexpr Index kNone = std::numeric_limits<Index>::max();

/// Near positions differ by less than this on each axis: the tolerance and a little for the rounding of squares.
constexpr double kReach = 1.001 * kNearDistance;

/// A number for each piece of an axis: the bits of the sum of `x` and 3 * 2^40.
///
/// Up to 2^40 in magnitude the last bit of the sum weighs 2^-11, nearly five tolerances, so a piece is that long.
/// Farther out doubles are more than two tolerances apart, and the sum rounds at most five of them together. It
/// never falls while `x` rises, and does not overflow. So for all finite `x`:
/// - What is within reach of `x` has the number of `x - kReach` or of `x + kReach`. Up to 2^40 these are less than
///   a piece apart, rounding included, and leave no third number between them; farther out both round to `x`.
/// - Positions of which no two are near come to at most 300 in a cell, which is a piece of each axis: as many balls
///   of half the tolerance find room there.
std::uint64_t Piece(double x) {
    double const sum = x + 0x3p40;
    std::uint64_t number;
    std::memcpy(&number, &sum, sizeof number);
    return number;
}

using Cell = std::array<std::uint64_t, 3>;

Cell CellOf(double x, double y, double z) {
    return {Piece(x), Piece(y), Piece(z)};
}

Cell CellOf(Position const& position) {
    return CellOf(position.X(), position.Y(), position.Z());
}

/// The positions that a merging copy keeps, and the search for the first of them that is near to another one.
///
/// A few are searched one after the other, more through a hash grid: buckets, each the list of the kept positions
/// whose cells have its hash. Buckets are searched whole for the least index, so the hash decides nothing but time.
class KeptPositions {
public:
    static constexpr std::size_t kBlock = 64;

    explicit KeptPositions(std::size_t most) {
        m_positions.reserve(most);
        if (most > kFew)
            MakeBuckets(most);
    }

    /// Fills `indices` with those of kept positions at the very same places, and kNone where it sees none at once.
    ///
    /// Nothing else that is kept is near to such a place, or it would be near to the position that is kept there.
    /// Most positions of most meshes are found here, and without a branch that depends on them, so that the waiting
    /// for memory overlaps. \param count  at most kBlock.
    void Recognise(Position const* positions, std::size_t count, Index* indices) const {
        if (m_buckets.empty() || m_positions.empty()) {
            std::fill_n(indices, count, kNone);
            return;
        }
        std::array<std::size_t, kBlock> buckets;
        for (std::size_t i = 0; i < count; ++i)
            buckets[i] = BucketOf(CellOf(positions[i]));
        auto const last = static_cast<Index>(m_positions.size() - 1);
        for (std::size_t i = 0; i < count; ++i)
            indices[i] = std::min(m_buckets[buckets[i]], last); // any kept position will do for an empty bucket
        for (std::size_t i = 0; i < count; ++i) {
            Position const& kept = m_positions[indices[i]];
            bool const sameX = kept.X() == positions[i].X();
            bool const sameY = kept.Y() == positions[i].Y();
            bool const sameZ = kept.Z() == positions[i].Z();
            indices[i] = (sameX & sameY & sameZ) ? indices[i] : kNone;
        }
    }

    /// The index of the first kept position that is near to `position`, which is kept when there is none.
    Index IndexOf(Position const& position) {
        Index const first = m_buckets.empty() ? FirstNearOfFew(position) : FirstNear(position);
        return first == kNone ? Keep(position) : first;
    }

    std::vector<Position> const& Positions() const { return m_positions; }

private:
    /// As many positions as are searched one after the other.
    static constexpr std::size_t kFew = 16;

    void MakeBuckets(std::size_t most) {
        std::size_t count = 1;
        for (; count < most; count *= 2)
            --m_shift;
        m_buckets.assign(count, kNone);
        m_next.reserve(most);
        // Different in every run, so that no mesh can be made whose positions all share a bucket.
        std::uint64_t random = reinterpret_cast<std::uintptr_t>(m_buckets.data());
        for (std::uint64_t& factor : m_factors) {
            random = (random + 0x9E3779B97F4A7C15) * 0xBF58476D1CE4E5B9;
            random ^= random >> 32;
            factor = random | 1u;
        }
    }

    std::size_t BucketOf(Cell const& cell) const {
        std::uint64_t hash = 0;
        for (std::size_t axis = 0; axis < cell.size(); ++axis)
            hash += (cell[axis] ^ cell[axis] >> 32) * m_factors[axis];
        return (hash ^ hash >> 32) * m_factors[0] >> m_shift;
    }

    Index FirstNearOfFew(Position const& position) const {
        for (Index index = 0; index < m_positions.size(); ++index)
            if (AreNear(position, m_positions[index]))
                return index;
        return kNone;
    }

    Index FirstNear(Position const& position) const {
        for (Index index : m_nearFromAfar)
            if (AreNear(position, m_positions[index]))
                return index;
        double const x = position.X();
        double const y = position.Y();
        double const z = position.Z();
        Cell const ends[] = {CellOf(x - kReach, y - kReach, z - kReach),
                             CellOf(x + kReach, y + kReach, z + kReach)};
        auto const pieces = [&ends](std::size_t axis) { return ends[0][axis] == ends[1][axis] ? 1 : 2; };
        Index first = kNone;
        for (int i = 0; i < pieces(0); ++i)
            for (int j = 0; j < pieces(1); ++j)
                for (int k = 0; k < pieces(2); ++k)
                    first = std::min(first, FirstNearIn({ends[i][0], ends[j][1], ends[k][2]}, position));
        return first;
    }

    /// Goes through the whole bucket of the cell, in which the indices fall.
    Index FirstNearIn(Cell const& cell, Position const& position) const {
        Index first = kNone;
        for (Index index = m_buckets[BucketOf(cell)]; index != kNone; index = m_next[index])
            if (AreNear(position, m_positions[index]))
                first = index;
        return first;
    }

    Index Keep(Position const& position) {
        auto const index = static_cast<Index>(m_positions.size());
        m_positions.push_back(position);
        if (m_buckets.empty())
            return index;
        bool const finite =
            std::isfinite(position.X()) && std::isfinite(position.Y()) && std::isfinite(position.Z());
        if (index == 0 || !finite)
            m_nearFromAfar.push_back(index);
        m_next.push_back(std::exchange(m_buckets[BucketOf(CellOf(position))], index));
        return index;
    }

    std::vector<Position> m_positions;
    /// The kept position put last into each bucket, or kNone. A power of two of them; none for a few positions.
    std::vector<Index> m_buckets;
    /// For each kept position the one put into its bucket before it, or kNone.
    std::vector<Index> m_next;
    /// In rising order the kept positions that may be near to what is out of their reach: the first one, as what is
    /// not a number is near to all, and those with an infinite coordinate, which are near to what shares it. Those
    /// are at most six, one for each end of each axis. A kept position that is not a number is the first and only.
    std::vector<Index> m_nearFromAfar;
    /// Odd factors of the hash, one an axis.
    Cell m_factors{};
    /// A hash of 64 bits shifted down by this is the place of a bucket.
    unsigned m_shift = 64;
};

/// Whether a corner uses each of `count` positions: the low 32 bits of an index decide, read with their sign.
std::vector<bool> UsedPositions(std::size_t count, std::vector<std::int64_t> const& indices) {
    std::vector<bool> used(count);
    for (std::int64_t const entry : indices)
        if (auto const index = static_cast<std::int32_t>(entry); index >= 0 && static_cast<Index>(index) < count)
            used[static_cast<Index>(index)] = true;
    return used;
}

} // namespace

Mesh::Mesh(Mesh const& other, bool merge)
    : m_key(other.m_key), m_name(other.m_name), m_transform(other.m_transform) {
    auto const& positions = other.m_positions;
    auto const& indices = other.m_indices;
    if (!merge) {
        m_positions = positions;
        m_indices = indices;
        return;
    }

    // What becomes of a position that no corner uses has no effect: it is not kept, and nothing asks for its index.
    std::vector<bool> const used = UsedPositions(positions.size(), indices);
    std::vector<Index> remap(positions.size());
    KeptPositions kept(std::min(positions.size(), indices.size()));
    for (std::size_t begin = 0; begin < positions.size(); begin += KeptPositions::kBlock) {
        std::size_t const end = std::min(begin + KeptPositions::kBlock, positions.size());
        kept.Recognise(&positions[begin], end - begin, &remap[begin]);
        for (std::size_t i = begin; i < end; ++i)
            if (remap[i] == kNone && used[i])
                remap[i] = kept.IndexOf(positions[i]);
    }

    m_positions = kept.Positions();
    m_indices.reserve(indices.size());
    for (std::int64_t const entry : indices)
        if (auto const index = static_cast<std::uint64_t>(entry); index < remap.size() && remap[index] != kNone)
            m_indices.push_back(remap[index]);
}

} // namespace qel::Sectrix
