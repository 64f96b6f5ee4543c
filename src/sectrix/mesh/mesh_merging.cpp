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

/// Stands where there is no index: a sentinel. It is greater than every index, so that a search for the least may
/// begin with it.
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

/// Asks for the memory at an address, to be read soon: a hint, which changes nothing but time.
void Prefetch(void const* address) {
#if defined(__GNUC__)
    __builtin_prefetch(address);
#else
    static_cast<void>(address);
#endif
}

/// One merging: the positions that are kept, and the search for the first of them that is near to another one.
///
/// A few are searched one after the other, more through a hash grid: buckets, each the list of the kept positions
/// whose cells have its hash. A cell's bucket is searched for the least index, and a kept position is never looked
/// for elsewhere than in its own cell, so the hash decides nothing but time.
///
/// Memory is slow beside all else here. So positions go through four steps a block at a time, and each step asks
/// for the memory that the next one reads, blocks before that.
class Merging {
public:
    /// \param used  whether each position may be kept.
    /// \param most  as many may be kept.
    Merging(std::vector<Position> const& positions, std::vector<char> const& used, std::size_t most)
        : m_positions(positions), m_used(used), m_remap(positions.size()) {
        m_kept.reserve(most);
        if (most > kFew)
            MakeBuckets(most);
    }

    void Run() {
        if (m_buckets.empty()) {
            for (std::size_t i = 0; i < m_positions.size(); ++i)
                m_remap[i] = m_used[i] ? IndexAmongFew(m_positions[i]) : kNone;
            return;
        }
        for (std::size_t end = 0; end < m_positions.size() + 2 * kBlock; end += kBlock) {
            HashBlock(end);
            if (end >= kBlock)
                LookUpBlock(end - kBlock);
            if (end >= 2 * kBlock) {
                RecogniseBlock(end - 2 * kBlock);
                KeepTheRest();
            }
        }
    }

    /// For each position the kept one that it becomes, or kNone where it is not used.
    std::vector<Index> const& Remap() const { return m_remap; }
    /// The kept positions, with little room to spare; they are gone then.
    std::vector<Position> TakeKept() {
        if (m_kept.size() < m_kept.capacity() / 8 * 7)
            m_kept.shrink_to_fit();
        return std::move(m_kept);
    }

private:
    using Hash = std::uint64_t;

    static constexpr std::size_t kBlock = 16;
    /// As many positions are searched one after the other.
    static constexpr std::size_t kFew = 48;
    /// How many positions before its use one is asked for from memory.
    static constexpr std::size_t kAhead = 192;
    /// Of an entry: there are others in its bucket.
    static constexpr Index kHasOthers = Index{1} << 31;

    /// A position that was not recognised, and where all that is near to it is kept.
    struct Unknown {
        std::size_t m_place;
        /// How many positions of `m_nearFromAfar` it has been compared with.
        std::size_t m_compared;
        /// The axes, a bit each, on which what is near to it may lie in one of two pieces.
        unsigned m_twoPieces;
        /// Of the cells that it may lie in. Bit by bit the place in this list tells the piece on each axis.
        std::array<Hash, 8> m_cells;
    };

    void MakeBuckets(std::size_t most) {
        std::size_t count = 1;
        for (; count <= most; count *= 2)
            --m_shift;
        m_buckets.assign(count, kNone);
        m_others.reserve(most);
        m_indexBits = static_cast<Index>(count - 1);
        m_hashBits = ~m_indexBits & ~kHasOthers;
        // Different in every run, so that no mesh can be made whose positions all share a bucket.
        std::uint64_t random = reinterpret_cast<std::uintptr_t>(m_buckets.data());
        for (std::uint64_t& factor : m_factors) {
            random = (random + 0x9E3779B97F4A7C15) * 0xBF58476D1CE4E5B9;
            random ^= random >> 32;
            factor = random | 1u;
        }
    }

    /// The part of a cell's hash that is due to one axis; different for different pieces.
    Hash Term(double x, std::size_t axis) const {
        std::uint64_t const piece = Piece(x);
        return (piece ^ piece >> 32) * m_factors[axis];
    }
    /// The hash of a cell.
    Hash Mixed(Hash x, Hash y, Hash z) const {
        Hash const sum = x + y + z;
        return (sum ^ sum >> 32) * m_factors[0];
    }
    Index& BucketOf(Hash hash) { return m_buckets[hash >> m_shift]; }
    /// False where an entry is for a cell of another hash.
    bool HasHash(Index entry, Hash hash) const { return ((entry ^ static_cast<Index>(hash)) & m_hashBits) == 0; }
    std::size_t EndOf(std::size_t begin) const { return std::min(begin + kBlock, m_positions.size()); }

    void HashBlock(std::size_t begin) {
        for (std::size_t i = begin; i < EndOf(begin); ++i) {
            Position const& position = m_positions[i];
            Hash const hash = Mixed(Term(position.X(), 0), Term(position.Y(), 1), Term(position.Z(), 2));
            m_hashes[i % m_hashes.size()] = hash;
            Prefetch(&BucketOf(hash));
            Prefetch(&m_positions[std::min(i + kAhead, m_positions.size() - 1)]);
        }
    }

    /// Writes for each position one that is kept, the last of its cell where there is one, else any.
    void LookUpBlock(std::size_t begin) {
        for (std::size_t i = begin; i < EndOf(begin); ++i) {
            Hash const hash = m_hashes[i % m_hashes.size()];
            Index const entry = BucketOf(hash);
            bool const isThere = entry != kNone;
            bool const hasHash = HasHash(entry, hash);
            m_remap[i] = (isThere & hasHash) ? entry & m_indexBits : 0;
            Prefetch(m_kept.data() + m_remap[i]);
        }
    }

    /// Recognises the positions at the very same places as those looked up; lists the others that are used.
    ///
    /// Nothing else that is kept is near to such a place, or it would be near to the position that is kept there.
    /// Most positions of most meshes are found here, without a branch that depends on them.
    void RecogniseBlock(std::size_t begin) {
        for (std::size_t i = begin; i < EndOf(begin) && !m_kept.empty(); ++i) {
            Position const& kept = m_kept[m_remap[i]];
            bool const sameX = kept.X() == m_positions[i].X();
            bool const sameY = kept.Y() == m_positions[i].Y();
            bool const sameZ = kept.Z() == m_positions[i].Z();
            m_remap[i] = (sameX & sameY & sameZ) ? m_remap[i] : kNone;
        }
        m_unknownCount = 0;
        for (std::size_t i = begin; i < EndOf(begin); ++i) {
            if (m_kept.empty())
                m_remap[i] = kNone;
            if (m_remap[i] != kNone || !m_used[i])
                continue;
            m_remap[i] = FirstNearFromAfar(m_positions[i], 0);
            if (m_remap[i] == kNone)
                AddUnknown(i);
        }
    }

    void AddUnknown(std::size_t place) {
        Unknown& unknown = m_unknown[m_unknownCount++];
        unknown.m_place = place;
        unknown.m_compared = m_nearFromAfar.size();
        unknown.m_twoPieces = 0;
        Position const& position = m_positions[place];
        std::array<double, 3> const coordinates{position.X(), position.Y(), position.Z()};
        Hash terms[3][2];
        for (unsigned axis = 0; axis < 3; ++axis) {
            terms[axis][0] = Term(coordinates[axis] - kReach, axis);
            terms[axis][1] = Term(coordinates[axis] + kReach, axis);
            unknown.m_twoPieces |= unsigned{terms[axis][0] != terms[axis][1]} << axis;
        }
        for (unsigned cell = 0; cell < unknown.m_cells.size(); ++cell) {
            Hash const hash = Mixed(terms[0][cell & 1], terms[1][cell >> 1 & 1], terms[2][cell >> 2]);
            unknown.m_cells[cell] = hash;
            Prefetch(&BucketOf(hash));
        }
    }

    /// Gives each position of the list the first kept one that is near, or keeps it.
    void KeepTheRest() {
        for (std::size_t i = 0; i < m_unknownCount; ++i) {
            Unknown const& unknown = m_unknown[i];
            Index const first = FirstNear(unknown);
            m_remap[unknown.m_place] = first == kNone ? Keep(unknown.m_place) : first;
        }
    }

    Index IndexAmongFew(Position const& position) {
        auto const near = std::find_if(m_kept.begin(), m_kept.end(),
                                       [&](Position const& kept) { return AreNear(position, kept); });
        auto const index = static_cast<Index>(near - m_kept.begin());
        if (near == m_kept.end())
            m_kept.push_back(position);
        return index;
    }

    Index FirstNearFromAfar(Position const& position, std::size_t compared) const {
        for (std::size_t i = compared; i < m_nearFromAfar.size(); ++i)
            if (AreNear(position, m_kept[m_nearFromAfar[i]]))
                return m_nearFromAfar[i];
        return kNone;
    }

    Index FirstNear(Unknown const& unknown) {
        Position const& position = m_positions[unknown.m_place];
        Index first = FirstNearFromAfar(position, unknown.m_compared);
        if (first != kNone)
            return first;
        // Most positions come to buckets without any such entry, and one jump for all eight is foretold best.
        bool mayBeNear = false;
        for (Hash const hash : unknown.m_cells) {
            Index const entry = BucketOf(hash);
            bool const isThere = entry != kNone;
            bool const hasOthers = (entry & kHasOthers) != 0;
            bool const hasHash = HasHash(entry, hash);
            mayBeNear |= isThere & (hasOthers | hasHash);
        }
        for (unsigned cell = 0; mayBeNear && cell < unknown.m_cells.size(); ++cell)
            if ((cell & ~unknown.m_twoPieces) == 0)
                first = std::min(first, FirstNearIn(unknown.m_cells[cell], position));
        return first;
    }

    /// Goes through the bucket of the cell, in which the indices fall.
    Index FirstNearIn(Hash hash, Position const& position) {
        Index first = kNone;
        for (Index entry = BucketOf(hash); entry != kNone;) {
            Index const index = entry & m_indexBits;
            if (HasHash(entry, hash) && AreNear(position, m_kept[index]))
                first = index;
            entry = entry & kHasOthers ? m_others[index] : kNone;
        }
        return first;
    }

    Index Keep(std::size_t place) {
        Position const& position = m_positions[place];
        Hash const hash = m_hashes[place % m_hashes.size()];
        auto const index = static_cast<Index>(m_kept.size());
        m_kept.push_back(position);
        bool const finite =
            std::isfinite(position.X()) && std::isfinite(position.Y()) && std::isfinite(position.Z());
        if (index == 0 || !finite)
            m_nearFromAfar.push_back(index);
        Index& bucket = BucketOf(hash);
        Index const entry = index | (static_cast<Index>(hash) & m_hashBits) | (bucket == kNone ? 0 : kHasOthers);
        m_others.push_back(std::exchange(bucket, entry));
        return index;
    }

    std::vector<Position> const& m_positions;
    std::vector<char> const& m_used;
    std::vector<Index> m_remap;
    std::vector<Position> m_kept;
    /// An entry for the kept position put last into each bucket, or kNone. An entry is the index, kHasOthers, and
    /// in the bits between them some of the hash of the cell, so that most others are told apart without a look at
    /// them. A power of two of buckets, more than indices, so that no entry is kNone; none for a few positions.
    std::vector<Index> m_buckets;
    /// For each kept position the entry that was in its bucket before it, or kNone.
    std::vector<Index> m_others;
    /// In rising order the kept positions that may be near to what is out of their reach: the first one, as what is
    /// not a number is near to all, and those with an infinite coordinate, which are near to what shares it. Those
    /// are at most six, one for each end of each axis. A kept position that is not a number is the first and only.
    std::vector<Index> m_nearFromAfar;
    /// Of the positions in the blocks at work.
    std::array<Hash, 4 * kBlock> m_hashes;
    std::array<Unknown, kBlock> m_unknown;
    std::size_t m_unknownCount = 0;
    /// Odd factors of the hash, one an axis.
    std::array<std::uint64_t, 3> m_factors{};
    /// A hash of 64 bits shifted down by this is the place of a bucket.
    unsigned m_shift = 64;
    /// Which bits of an entry are the index, and which are of the hash.
    Index m_indexBits = 0;
    Index m_hashBits = 0;
};

/// Whether a corner uses each of `count` positions: the low 32 bits of an index decide, read with their sign.
std::vector<char> UsedPositions(std::size_t count, std::vector<std::int64_t> const& indices) {
    std::vector<char> used(count); // no bits, which share words that a thousand writes in a row would wait for
    for (std::int64_t const entry : indices)
        if (auto const index = static_cast<std::int32_t>(entry); index >= 0 && static_cast<Index>(index) < count)
            used[static_cast<Index>(index)] = 1;
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
    std::vector<char> const used = UsedPositions(positions.size(), indices);
    Merging merging(positions, used, std::min(positions.size(), indices.size()));
    merging.Run();

    auto const& remap = merging.Remap();
    m_positions = merging.TakeKept();
    m_indices.reserve(indices.size());
    for (std::int64_t const entry : indices)
        if (auto const index = static_cast<std::uint64_t>(entry); index < remap.size() && remap[index] != kNone)
            m_indices.push_back(remap[index]);
}

} // namespace qel::Sectrix
