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

/// A corner of a loop: the index of a position, and whether the edge that arrives here lies on the section's
/// outline.
class SECTRIX_EXPORT Vertex {
public:
    /// \param index     a pool index; not tested.
    /// \param exterior  true when the edge from the previous vertex to this one lies on the outline, false when a
    /// bridge
    ///                  or a cut has made it.
    Vertex(int index, bool exterior) : m_index(index), m_exterior(exterior) {}

    /// True when both the indices and the flags are equal.
    bool operator==(Vertex const& other) const {
        return m_index == other.m_index && m_exterior == other.m_exterior;
    }
    bool operator!=(Vertex const& other) const { return !(*this == other); }

    int Index() const { return m_index; }
    bool Exterior() const { return m_exterior; }
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
    Loop(CSPositions const& pool, bool fill);
    /// A copy over the same pool.
    Loop(Loop const& other) = default;
    /// A copy over `pool`, with the indices taken as they are: `pool` must hold the same positions under them.
    Loop(Loop const& other, CSPositions const& pool);
    /// Takes the vertices of `other`; the pool stays.
    Loop& operator=(Loop const& other);

    std::vector<Vertex> const& Vertices() const { return m_vertices; }
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
    /// false. With `to` equal to `from` the run is here the whole of `other` and its start once more. \param place
    /// a place of this loop; not looked at when the loop is empty. \param to     a place of `other`; -1 means
    /// `from`.
    void Add(Loop const& other, int place, int from, int to);

    /// Shortens the loop so that the edge from `first` to `last` becomes one of its edges, with the flag of the
    /// vertex at `last` false. With `last` behind `first` the vertices between them go; else what stays is the run
    /// from `last` to `first`. Does nothing when a place is not in the loop.
    void Cut(int first, int last);

    /// The first place of least x, or -1 when no vertex has a finite x below the largest double. Worked out once
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
    /// the index of the first is dropped, once. All flags become true. \param dom       an array of pool indices,
    /// counter-clockwise. \param exterior  false reverses the order, so that a hole runs clockwise, and puts the
    /// vertices in front.
    bool From(Dom const& dom, bool exterior);
    /// Appends the indices to `dom`, in reverse order where `exterior` is false. No flag is written.
    void To(Dom& dom, bool exterior);

    /// Writes a line `prefix` and index for each vertex.
    void Dump(std::ofstream& stream, char const* prefix) const;

private:
    friend class CrossSection;

    bool HasPlace(int place) const { return place >= 0 && static_cast<std::size_t>(place) < m_vertices.size(); }
    /// What `LeftMostVertex` works out.
    int FindLeftMost() const;
    /// Marks the list as changed.
    void Touch() { m_leftMost = -1; }
    /// Binds the loop to another pool, in which its indices have the same meaning.
    void Rebind(CSPositions const& pool) { m_positions = &pool; }

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
