#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/sections/cs_positions.h"
#include "sectrix/sections/loop.h"

#include <cstdint>
#include <iosfwd>
#include <set>
#include <string>
#include <vector>

/// \file
/// One section of a structural part, and the convex loops that cover it.

namespace qel {

class Dom;

namespace Sectrix {

class HoleMerger;
struct SectionPair;

/// A planar outline: one exterior loop, any number of interior loops (holes), and the name of an assembly part.
///
/// The exterior loop runs counter-clockwise with x to the right and y upward, interior loops run clockwise; nothing
/// tests this. The section does not own its points: it refers to a pool that it shares with the other sections of
/// its set and that must outlive it.
///
/// From its loops a section derives, on first demand, convex loops that cover the same area. These, and the record
/// of the positions that deriving them added to the pool, are written through constant sections too. So a section
/// must not be used from two threads before they are built, nor may another section over the same pool. They do not
/// follow a later edit of the exterior or interior loops: see `ResetConvexLoops`.
///
/// A section has no move of its own; moving one is copying it.
class SECTRIX_EXPORT CrossSection {
public:
    /// \name Making and copying
    /// @{

    /// A section without loops over a shared, empty pool.
    CrossSection();
    /// A section over `pool`, its exterior loop made as `Loop(pool, fill)`.
    CrossSection(CSPositions& pool, bool fill);
    /// A full copy over the same pool, derived state included.
    CrossSection(CrossSection const& other) = default;
    /// A copy over `pool`, with the indices taken as they are. Builds the convex loops of `other` first if they are
    /// not built yet, which may append to its pool; `pool` must hold the same positions, these included.
    CrossSection(CrossSection const& other, CSPositions& pool);
    /// Takes the exterior, interior and convex loops of `other`. The name, the pool and the list of added vertices
    /// stay.
    ///
    /// Loops that the target has already keep their pool, and so do not see that of `other`; those beyond are
    /// copies over the pool of `other`.
    CrossSection& operator=(CrossSection const& other);

    /// @}
    /// \name Reading
    /// References are good until the list that they refer to next changes.
    /// @{

    /// The name of the assembly part, empty when there is none.
    std::string const& AssemblyPartName() const { return m_assemblyPartName; }
    /// The outline.
    Loop const& ExteriorLoop() const { return m_exteriorLoop; }
    /// The outline, for changing.
    Loop& GetExteriorLoop() { return m_exteriorLoop; }
    /// The holes, in document order.
    std::vector<Loop> const& InteriorLoops() const { return m_interiorLoops; }
    /// The holes, for changing.
    std::vector<Loop>& GetInteriorLoops() { return m_interiorLoops; }
    /// The pool indices of the positions that building the convex loops has added, in the order of their making.
    /// Never builds.
    std::vector<int> const& AddedVertices() const { return m_addedVertices; }
    /// The pool that the loops refer to.
    CSPositions const& Positions() const { return *m_positions; }

    /// The box around the exterior and interior loops, worked out anew at each call.
    qel::BBox<2, double> BBox() const;
    /// The number of vertices with a named position, over the exterior and interior loops.
    std::uint64_t GetNamedPositionCount() const;

    /// @}
    /// \name Building
    /// @{

    /// Appends an empty interior loop over the section's pool.
    Loop& AddInteriorLoop();
    /// Appends an empty loop over the section's pool to the convex loops. On a section that is not built this
    /// counts as the build: the list then holds what the caller puts there.
    Loop& AddConvexLoop() const;

    /// Reads a section from its element of a document, and returns whether it was read whole and is valid: each of
    /// its loops has at least three vertices, and exactly one is exterior. Otherwise the section keeps what was
    /// read up to then and is best discarded.
    ///
    /// \param dom  an object with the array "loops" and optionally the string "assemblyPartName", or the array alone.
    /// A loop is a pair: an array of pool indices, and true for the exterior loop.
    bool From(Dom const& dom);
    /// Writes the name, unless it is empty, and the loops into `dom`, a fresh node or an object.
    void To(Dom& dom);

    /// @}
    /// \name Convex loops
    /// @{

    /// Loops that together cover the area of the section, convex as far as cutting got, built first if the list is
    /// empty.
    ///
    /// Entry 0 is what is left of the outline. Entries 1 onward are the holes that could not be merged into it, if
    /// any, each with what is left of it. Then come the pieces in the order in which they were cut. A loop that
    /// cannot be cut any further stays in the list although it is not convex. Flags tell the outline from bridges
    /// and cuts: an edge that a bridge or a cut has made arrives at a vertex whose flag is false, in both loops
    /// that carry it.
    ///
    /// Holes are merged by bridges to the left, whose feet may be new, unnamed positions at the end of the pool. A
    /// section whose exterior loop has no vertices has no convex loops, whatever its holes. When memory runs out in
    /// a build, the section stays unbuilt and the pool as it was.
    std::vector<Loop> const& ConvexLoops() const;
    /// The same list for changing.
    std::vector<Loop>& GetConvexLoops();

    /// Drops the convex loops, and moves the indices of the added positions into `removed` beside what that holds.
    /// The positions stay in the pool; `CrossSections::ResetConvexLoops` takes them out for a whole set.
    void ResetConvexLoops(std::set<int>& removed);

    /// @}

    /// \name Alignment and blending
    /// @{

    /// A section over `pool` that lies between two sections. It moves positions that `pool` has, and adds none.
    ///
    /// The exterior loops are blended, tested or not, and then every interior loop of `second` with its partner in
    /// `first`, each as the blending constructor of `Loop` does it. So the interior loops follow the order of
    /// `second` with the vertices of `first`, and those without a partner are left out. The name is that of `first`
    /// where both have the same, else empty. The list of added vertices is that of `first`, since these positions
    /// came into `pool` with the others; the convex loops are not built.
    ///
    /// \param pool  has an entry under every index that `first` uses, or else loses that vertex.
    ///
    /// \param firstPositions, secondPositions  not looked at: coordinates come from the pools of the loops.
    ///
    /// \param ratio  neither tested nor held to 0 to 1; beyond these it extrapolates.
    CrossSection(CrossSection const& first, CrossSection const& second, CSPositions& pool,
                 CSPositions const& firstPositions, CSPositions const& secondPositions, double ratio);

    /// The interior loop of this section that is the partner of `loop`, with `found` true: the one at `place` when
    /// `loop` is compatible with it, else the first that `loop` is compatible with. One loop may be the partner of
    /// several. Where there is none, `loop` itself, with `found` false.
    ///
    /// Unless both this section's pool and that of `loop` have names in their name index, only the one at `place`
    /// is looked at.
    ///
    /// \param loop   as a rule a loop of another section.
    ///
    /// \param place  as a rule the place of `loop` in its own list. Beyond the end of this one it says nothing.
    Loop const& GetCompatibleInteriorLoop(Loop const& loop, std::uint64_t place, bool& found) const;

    /// True when the two sections are built from the same loops. With names in both pools they must have equally
    /// many named positions, in any case.
    ///
    /// With n vertices in all, the holes in any order, this costs time in proportion to n log n.
    ///
    /// \param other   the exterior loops must be compatible, the numbers of interior loops equal, and every loop
    ///                in `other` must have a partner in this section. So the answer may differ from that of
    ///                `other` about this section.
    ///
    /// \param convex  true compares the lists of convex loops place by place instead, this section's with that of
    ///                `other`, built first where they are not: positions may be added to both pools.
    bool IsCompatible(CrossSection const& other, bool convex) const;

    /// @}

    /// Writes the exterior, interior and convex loops, building the latter if need be, as indented text.
    /// \param prefix  stands at the start of every line, and twice in those of interior and convex loops; not null.
    void Dump(std::ofstream& stream, char const* prefix) const;

protected:
    // The steps of the build, for a class that runs them one by one on a working list that it has filled itself
    // through `AddConvexLoop`: the outline first, then the holes.

    /// Merges the hole that lies furthest left into the outline and takes it out of the working list. False, with
    /// nothing changed, when there is no hole or none can be merged.
    bool RemoveHole() const;
    /// Merges holes until one cannot be merged or none is left.
    void RemoveHoles() const;
    /// Cuts one convex piece off the loop at `index` and appends it to the list; returns false then. True when the
    /// loop needs no further cut, cannot be cut, or the list has as many loops as the pool has positions.
    ///
    /// \param index  an entry of the list; for any other the answer is true.
    bool BuildConvexLoop(std::uint64_t index) const;
    /// Cuts every loop of the list, those not counted that this adds, until there is nothing more to cut.
    void BuildConvexLoops() const;
    /// `value` brought into 0 to `size` - 1 in steps of `size`, which must be positive.
    int Modulo(int value, int size) const;

private:
    friend class CrossSections;

    // Where the members stand that are not in cross_section.cpp:
    //   From, To                                            section_document.cpp
    //   ConvexLoops, BuildConvexLoop, ResetConvexLoops      cutting/convex_decomposition.cpp
    //   RemoveHole, RemoveHoles                             cutting/hole_removal.cpp
    //   IsCompatible, GetCompatibleInteriorLoop             blending/section_pairing.cpp
    //   the blending constructor, Blend                     blending/interpolation.cpp
    //   Dump                                                dump.cpp

    // In cutting/hole_removal.cpp, where they are described.
    std::size_t MergeHoles(std::size_t limit) const;
    void TakeMerged(HoleMerger const& merger) const;

    /// Binds the section and its loops to the pool `to` as far as they are bound to `from`. Indices keep their
    /// meaning.
    void Rebind(CSPositions const& from, CSPositions& to);

    /// Fills this section, which must be fresh, as the blending constructor does.
    void Blend(SectionPair const& pair, double ratio);

    /// The pool of a default-built section.
    static CSPositions m_emptyPositions;

    std::string m_assemblyPartName;
    Loop m_exteriorLoop;
    /// The holes, in document order.
    std::vector<Loop> m_interiorLoops;
    /// Empty while not built; the working list during a build; then the result.
    mutable std::vector<Loop> m_convexLoops;
    /// Never null, not owned. Not constant, because building convex loops appends to it. Changed only when the set
    /// that holds the pool moves or is copied.
    CSPositions* m_positions;
    /// The pool indices of the unnamed positions that merging holes has appended for this section.
    mutable std::vector<int> m_addedVertices;
};

} // namespace Sectrix
} // namespace qel
