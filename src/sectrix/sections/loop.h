#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/sections/cs_positions.h"

#include <cstdint>
#include <iosfwd>
#include <string>
#include <vector>

/// \file
/// A closed polygon over the positions of a pool.

namespace qel {

class Dom;

namespace Sectrix {

class HoleMerger;

/// A corner of a loop: the index of a position, and whether the edge that arrives here lies on the section's
/// outline.
class SECTRIX_EXPORT Vertex {
public:
    /// \param index     a pool index; not tested.
    /// \param exterior  true when the edge from the previous vertex to this one lies on the outline, false when a
    /// bridge or a cut has made it.
    Vertex(int index, bool exterior) : m_index(index), m_exterior(exterior) {}

    /// True when both the indices and the flags are equal.
    bool operator==(Vertex const& other) const {
        return m_index == other.m_index && m_exterior == other.m_exterior;
    }
    /// True when the indices or the flags differ.
    bool operator!=(Vertex const& other) const { return !(*this == other); }

    /// The pool index.
    int Index() const { return m_index; }
    /// True when the edge that arrives here lies on the outline.
    bool Exterior() const { return m_exterior; }
    /// Replaces the flag.
    void SetExterior(bool exterior) { m_exterior = exterior; }

protected:
    Vertex() = default;

private:
    int m_index = -1;
    bool m_exterior = false;
};

/// A closed polygon whose corners are indices into a pool. The last vertex connects to the first, which is not
/// repeated.
///
/// A vertex is known by its place, its position in the list of vertices counted from 0; a place is not a pool
/// index. Indices are not tested when they enter. Whatever reads a vertex whose index is not in the pool, negative
/// or past its end, passes over it.
///
/// The pool is given at construction, must outlive the loop, and is kept by assignment: a loop takes another's
/// vertices without leaving its own pool. A loop has no move of its own; moving one is copying it.
class SECTRIX_EXPORT Loop {
public:
    /// A loop without vertices over a shared, empty pool.
    Loop();
    /// A loop over `pool`. With `fill` true it runs once through all positions that the pool holds at this moment,
    /// in pool order, every flag true; with `fill` false it is empty.
    Loop(CSPositions const& pool, bool fill) : m_positions(&pool) {
        if (fill)
            Fill();
    }
    /// A copy over the same pool.
    Loop(Loop const& other) = default;
    /// A copy over `pool`, with the indices taken as they are: `pool` must hold the same positions under them.
    Loop(Loop const& other, CSPositions const& pool);
    /// Takes the vertices of `other`; the pool stays.
    Loop& operator=(Loop const& other);

    /// The corners, in order.
    std::vector<Vertex> const& Vertices() const { return m_vertices; }
    /// The pool that the indices refer to.
    CSPositions const& Positions() const { return *m_positions; }

    /// Appends a vertex.
    void AddVertex(int index, bool exterior);
    /// Inserts a vertex with the flag true in front of `place`; a place that is not in the loop makes it an append.
    /// \param index  a pool index, the first of the two arguments.
    void InsertVertex(int index, int place);
    /// Removes a vertex; a place that is not in the loop does nothing.
    void RemoveVertex(int place);

    /// Copies a run of another loop's vertices into this one. Does nothing when a place is not in its loop.
    ///
    /// The run goes from `from` forward to `to`, past the end of the list where `to` is not behind `from`. An empty
    /// loop becomes the run, its first flag false; but with `to` equal to `from` it becomes the whole of `other`,
    /// starting at `from`, flags as they were. A loop with vertices gets, behind `place`, the run and a second copy
    /// of the vertex at `place`, which bridges the two: the first flag of the run and that of the copy become
    /// false. With `to` equal to `from` the run is here the whole of `other` and its start once more.
    ///
    /// \param place  a place of this loop; not looked at when the loop is empty.
    /// \param to     a place of `other`; -1 means `from`.
    void Add(Loop const& other, int place, int from, int to);

    /// Shortens the loop so that the edge from `first` to `last` becomes one of its edges, with the flag of the
    /// vertex at `last` false. With `last` behind `first` the vertices between them go; else what stays is the run
    /// from `last` to `first`. Does nothing when a place is not in the loop.
    void Cut(int first, int last);

    /// The first place of least x, or -1 when no vertex has an x below the largest double. Worked out once
    /// after each change of the list, and so not constant.
    int LeftMostVertex();

    /// The box around the vertices, worked out anew at each call; empty when there is nothing to enclose.
    qel::BBox<2, double> BBox() const;

    /// The first place whose position has this name, or -1. The empty name finds the first unnamed position.
    int NamedPositionIndex(std::string const& name) const;
    /// The number of vertices whose position has a name; a position that occurs twice counts twice.
    std::uint64_t GetNamedPositionCount() const;

    /// Appends the vertices that a document lists, and returns whether the loop then has at least three.
    ///
    /// Indices that are not in the pool are left out; an element that is no number reads as 0. A last vertex with
    /// the index of the first is dropped, once. All flags become true.
    ///
    /// \param dom       an array of pool indices, counter-clockwise.
    /// \param exterior  false reverses the order, so that a hole runs clockwise, and puts the vertices in front.
    bool From(Dom const& dom, bool exterior);
    /// Appends the indices to `dom`, in reverse order where `exterior` is false. No flag is written.
    void To(Dom& dom, bool exterior);

    /// \name Alignment and blending
    ///
    /// Loops are aligned by the names of their positions, compared byte for byte. Coordinates are never looked at
    /// and there is no tolerance. A vertex is named when its index is in its loop's pool and the position there has
    /// a name.
    /// @{

    /// A loop over `pool` that lies between two loops. It moves positions that `pool` has, and adds none.
    ///
    /// With m the smaller of the two numbers of vertices, the vertices of `first` at the places 0 to m - 1 are
    /// paired with vertices of `second` by the shift of `first` against `second`, also where that shift is not
    /// good; a negative one counts as 0. Where the first index of a pair is in `pool` and both its vertices have a
    /// position, that entry of `pool` moves to the blend (1 - ratio) * p + ratio * q of the two, and a copy of the
    /// first vertex, flag included, is appended. Other pairs are left out. Where a position is used twice the later
    /// write stands in full.
    ///
    /// \param first   gives the vertices, in its order, and the coordinates p, from its own pool.
    ///
    /// \param second  gives the coordinates q, from its own pool.
    ///
    /// \param pool    has an entry under every index that `first` uses, or else loses that vertex.
    ///
    /// \param firstPositions, secondPositions  not looked at.
    ///
    /// \param ratio   neither tested nor held to 0 to 1; beyond these it extrapolates.
    Loop(Loop const& first, Loop const& second, CSPositions& pool, CSPositions const& firstPositions,
         CSPositions const& secondPositions, double ratio);

    /// The shift s that brings this loop onto `other`: with n vertices each, vertex i of this loop corresponds to
    /// vertex (i - s) mod n of `other`.
    ///
    /// The first named vertex of this loop fixes the shift, by the first vertex of that name in `other`, and every
    /// later one must confirm it. So a name that a loop bears twice never lines up, nor does a loop that runs the
    /// other way round. Unnamed vertices are not compared. Without a named vertex in either the shift is 0 and
    /// good. The remainder truncates towards zero: against a longer `other` the shift can be negative.
    ///
    /// Costs time in proportion to n log n for large loops, and allocates nothing for small ones.
    ///
    /// \param ok  false when the numbers of named vertices differ, or when the walk through this loop meets an
    ///            index that is not in its pool, a name that `other` lacks or another shift than the fixed one.
    ///            The result is then the shift fixed before that, or 0.
    int GetOtherShift(Loop const& other, bool& ok) const;

    /// True when the loops have the same number of vertices and line up. Where both pools have names in their name
    /// index, that is what `GetOtherShift` says, whether or not these loops use a name. Otherwise the lists of
    /// vertices must be equal, place by place, in index and flag.
    bool IsCompatible(Loop const& other) const;

    /// @}

    /// Writes a line `prefix` and index for each vertex.
    void Dump(std::ofstream& stream, char const* prefix) const;

private:
    friend class CrossSection;
    friend class HoleMerger;

    // Where the members stand that are not in loop.cpp:
    //   From, To                           section_document.cpp
    //   GetOtherShift, IsCompatible        blending/loop_alignment.cpp
    //   the blending constructor, Blend    blending/interpolation.cpp
    //   Dump                               dump.cpp

    bool HasPlace(int place) const { return place >= 0 && static_cast<std::size_t>(place) < m_vertices.size(); }
    /// Appends a vertex for each position of the pool.
    void Fill();
    /// What `LeftMostVertex` works out.
    int FindLeftMost() const;
    /// Marks the list as changed.
    void Touch() { m_leftMost = -1; }
    /// Binds the loop to the pool `to` if it is bound to `from`. Indices keep their meaning.
    void Rebind(CSPositions const& from, CSPositions const& to) {
        if (m_positions == &from)
            m_positions = &to;
    }

    /// Fills this loop, which must be empty and over `pool`, as the blending constructor does.
    /// \param shift  by which the vertices are paired; not negative.
    void Blend(Loop const& first, Loop const& second, int shift, CSPositions& pool, double ratio);

    /// The pool of a default-built loop.
    static CSPositions const m_emptyPositions;

    std::vector<Vertex> m_vertices;
    /// Never null, not owned. Changed only when the set that holds the pool moves or is copied.
    CSPositions const* m_positions;
    /// The place that `LeftMostVertex` has worked out for the list as it stands; -1 while it has not.
    int m_leftMost = -1;
};

} // namespace Sectrix
} // namespace qel
