#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"

#include <cstdint>
#include <map>
#include <string>
#include <vector>

/// \file
/// The points of a set of sections: one point, and the pool of them all.

namespace qel::Sectrix {

/// A 2D point with an optional name.
class SECTRIX_EXPORT CSPosition {
public:
    /// The point (0, 0) without a name.
    CSPosition() = default;
    /// A point without a name.
    explicit CSPosition(Vec<2, double> const& position);
    /// A point with a name; an empty name is none.
    CSPosition(std::string const& name, Vec<2, double> const& position);
    /// A full copy.
    CSPosition(CSPosition const& other) = default;
    /// Takes the name over and leaves `other` without one; `other` keeps its point.
    CSPosition(CSPosition&& other) noexcept;
    /// Takes a full copy.
    CSPosition& operator=(CSPosition const& other) = default;
    /// Takes the name over and leaves `other` without one; `other` keeps its point.
    CSPosition& operator=(CSPosition&& other) noexcept;

    /// The name, empty for an unnamed position. A change made here does not reach the name index of a pool.
    std::string const& Name() const { return m_name; }
    /// The name, for changing.
    std::string& Name() { return m_name; }
    /// Element 0 is the horizontal x, to the right; element 1 is the vertical y, upward.
    Vec<2, double> const& Position() const { return m_position; }
    /// The point, for changing.
    Vec<2, double>& Position() { return m_position; }

private:
    Vec<2, double> m_position;
    /// Empty for an unnamed position.
    std::string m_name;
};

/// The pool: an ordered list of positions, and an index from names to places in it.
///
/// A position is known by its index, its place in the list counted from 0. Names need not be unique: the name index
/// knows only the position added last under a name. Loops and sections refer to a pool and are not known to it; the
/// pool must outlive them.
class SECTRIX_EXPORT CSPositions {
public:
    CSPositions() = default;
    /// A full copy, name index included.
    CSPositions(CSPositions const& other) = default;
    /// Takes all over and leaves `other` an empty pool, ready for use.
    CSPositions(CSPositions&& other) noexcept;
    /// Copies list and name index. When memory runs out the pool keeps what it had. Assigned to itself it is not
    /// touched.
    CSPositions& operator=(CSPositions const& other);
    /// Takes all over and leaves `other` an empty pool, ready for use.
    CSPositions& operator=(CSPositions&& other) noexcept;

    /// Appends an unnamed position and returns its index.
    int AddPosition(Vec<2, double> const& position);
    /// Appends a position and returns its index. Nothing is merged or replaced: a position that bears the name
    /// already stays, and is from then on found by its index only. An empty name makes an unnamed position.
    int AddPosition(std::string const& name, Vec<2, double> const& position);

    /// The position added last under `name`, with `found` true; else a shared sentinel, a position at (0, 0)
    /// without a name, with `found` false. The empty name is never found. Costs a walk down the name index.
    ///
    /// Look at `found` before writing through the result: what is written into the sentinel, every pool shows.
    CSPosition& GetPosition(std::string const& name, bool& found);
    /// The same for reading.
    CSPosition const& GetPosition(std::string const& name, bool& found) const;
    /// The position at `index`, with `found` true; else the sentinel, with `found` false. A negative `int` widened
    /// to 64 bits is not found.
    CSPosition& GetPosition(std::uint64_t index, bool& found);
    /// The same for reading.
    CSPosition const& GetPosition(std::uint64_t index, bool& found) const {
        found = index < m_positions.size();
        return found ? m_positions[index] : m_invalidPosition;
    }

    /// Removes one position; an index that is not in the pool does nothing.
    ///
    /// The positions behind it move one place forward, and neither the name index nor any loop follows them: all
    /// stays consistent only when the last position is removed. The name of the removed position leaves the name
    /// index, whichever position it stood for.
    void RemovePosition(std::uint64_t index);

    /// Makes room for `count` positions in all; does nothing when there is as much already.
    void Reserve(std::uint64_t count);

    /// The number of positions, named or not.
    int Count() const { return static_cast<int>(m_positions.size()); }
    /// The number of distinct names in the name index.
    int NamedCount() const { return static_cast<int>(m_nameIndex.size()); }

    /// The box around all positions, used by a loop or not, worked out anew at each call; empty for an empty pool.
    qel::BBox<2, double> BBox() const;

    /// Maps every position as the row vector (x, y, 1) times `matrix`, divided by the third component of the
    /// product. That component is not tested: where it is 0 the coordinates become infinite or not a number. Names
    /// stay.
    void Transform(Mat<3, double> const& matrix);

    /// The same as `operator=`.
    void SetPositions(CSPositions const& other);

    /// \name Alignment and blending
    /// @{

    /// Appends every position of `first`, in order and under its name, moved towards its partner in `second`.
    ///
    /// The partner of a named position is what `second` finds under that name, that of an unnamed one the position
    /// at the same index. A partner counts only where its own name is the same, so an unnamed position pairs with
    /// an unnamed one. With a partner the coordinates are the blend (1 - ratio) * p + ratio * q, two products
    /// rounded one by one and then added; without one they are those of `first`. Positions that only `second` has
    /// are left out. Into an empty pool every position gets the index that it has in `first`.
    ///
    /// \param first, second  other objects than this pool. Given this pool itself, the call takes a copy of it.
    ///
    /// \param ratio          neither tested nor held to 0 to 1; beyond them it extrapolates.
    void SetPositions(CSPositions const& first, CSPositions const& second, double ratio);

    /// @}

private:
    friend class Loop;
    friend class CrossSection;
    friend class CrossSections;

    /// The position at `index`, null when it is not in the pool.
    CSPosition const* Find(int index) const {
        auto const place = static_cast<std::uint64_t>(index);
        return place < m_positions.size() ? &m_positions[place] : nullptr;
    }

    using NameIndex = std::map<std::string, std::uint64_t>;

    /// Adds a position. \param named  the entry of a name added before, as a rule the last, or the end. Becomes
    /// that of `name`, unless it is empty. Names that follow each other in order then need no search.
    int AddPosition(std::string const& name, Vec<2, double> const& position, NameIndex::iterator& named);
    /// Appends every position of `other`, another pool, in order and under its name.
    void Append(CSPositions const& other);
    /// True when the name index is what adding the positions one by one would give: every named position is in it,
    /// alone under its name, and nothing else is.
    bool IsIndexExact() const;
    /// Moves the position at `place` towards its partner in `second`, as the blending `SetPositions` does.
    /// \param index  of the position in the pool that it comes from.
    void MoveToPartner(std::size_t place, std::size_t index, CSPositions const& second, double ratio);

    /// What a failed look-up returns.
    static CSPosition m_invalidPosition;

    /// Named and unnamed positions in one list, in the order in which they were added.
    std::vector<CSPosition> m_positions;
    /// From a name, never empty, to the index that the position added last under it was given. After a removal an
    /// entry may point past the end of the list, so a look-up tests it.
    NameIndex m_nameIndex;
};

} // namespace qel::Sectrix
