#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"
#include "sectrix/sections/cross_section.h"
#include "sectrix/sections/cs_positions.h"

#include <iosfwd>
#include <map>
#include <string>
#include <vector>

/// \file
/// A set of sections over one pool of positions.

namespace qel {

class Dom;

namespace Sectrix {

/// One pool of positions, the sections that share it, and the set's named parameters.
///
/// The set owns its pool and its sections. Copying, moving and assigning a set binds its sections and their loops
/// to its own pool, so that they are good wherever the set goes; references to its sections end with an assignment.
///
/// Distinct sets may be used from distinct threads. One set may be read by several once the convex loops of all its
/// sections and its box are built, since constant calls build these on first demand.
class SECTRIX_EXPORT CrossSections {
public:
    /// \name Making and copying
    /// @{

    /// An empty set, with a scale of 1.0.
    CrossSections();
    /// An empty set.
    ///
    /// \param scale  the factor by which a read multiplies the coordinates, such as 0.001 from millimetres to metres.
    explicit CrossSections(double scale);
    /// A set with these points as unnamed positions and one section, made as `CrossSection(pool, fill)`: with
    /// `fill` true a single closed outline.
    CrossSections(std::vector<Vec<2, double>> const& points, bool fill);
    /// The same over a copy of `positions`, names included.
    CrossSections(CSPositions const& positions, bool fill);
    /// A copy of all, derived state included. Nothing is built in `other`.
    CrossSections(CrossSections const& other);
    /// Takes pool, sections and parameters over, leaving `other` without any; it keeps its scale and box.
    CrossSections(CrossSections&& other) noexcept;
    /// Copies pool, scale, box and parameters, and assigns the list of sections: where the target has room for all
    /// of them, each section that it has already keeps its name and its list of added vertices and takes only the
    /// loops. Assigned to itself a set is not touched.
    CrossSections& operator=(CrossSections const& other);
    /// Drops what the target held and takes over as the move constructor does.
    CrossSections& operator=(CrossSections&& other) noexcept;

    /// @}
    /// \name Reading
    /// @{

    /// The sections, in document order.
    std::vector<CrossSection> const& Items() const { return m_items; }
    /// The sections, for changing.
    std::vector<CrossSection>& GetItems() { return m_items; }
    /// The pool of the set.
    CSPositions const& Positions() const { return m_positions; }
    /// The named parameters of the document read last.
    std::map<std::string, double> const& Parameters() const { return m_parameters; }
    /// The box around all positions of the pool, used by a loop or not. Worked out on first demand and then kept:
    /// it is renewed by a read with a scale other than 1.0 and by `NormalizeVertical`, and by nothing else.
    qel::BBox<2, double> const& BBox() const;
    /// True when at least one section has an interior loop.
    bool HasHollow() const;

    /// @}
    /// \name Changing
    /// @{

    /// Shifts all positions upward or downward so that the lowest one stands at y = 0. Does nothing when it lies
    /// there within 1e-4.
    void NormalizeVertical();

    /// Drops the convex loops of all sections and takes the positions that they had added out of the pool, from the
    /// highest index down. A position that the host has appended behind those moves down with nothing following it.
    /// When memory runs out nothing has changed.
    void ResetConvexLoops();

    /// @}
    /// \name Documents
    /// @{

    /// Reads JSON text from a stream that can seek. A stream that is empty or has no length changes nothing; text
    /// that cannot be parsed reads as an empty document.
    void From(std::istream& stream);
    /// Appends the positions and sections of a document, multiplies all positions of the pool by the scale, and
    /// replaces the parameters.
    ///
    /// What cannot be used is passed over and the rest is read: a position without two coordinates adds nothing and
    /// takes no index, a vertex index that is not in the pool is left out, a section with a loop of fewer than
    /// three vertices or without exactly one exterior loop is dropped. A document without a list of sections gives
    /// one section that runs through the whole pool.
    ///
    /// \param dom  an object with the array "Outlines", or else "outlines", of positions and sections, and optionally
    /// the object "Params". Indices in it are pool indices, counted from the first position in the set.
    void From(Dom const& dom);
    /// Writes positions, sections and parameters into `dom`, a fresh node or an object. Parameters go out as an
    /// array of objects with one member each, which reading passes over.
    void To(Dom& dom);

    /// @}

    /// \name Alignment and blending
    /// @{

    /// The set that lies the fraction `ratio` of the way from `first` to `second`. Every number is the blend
    /// (1 - ratio) * p + ratio * q in double precision: two products rounded one by one and then added.
    ///
    /// When `first` is compatible with `second`, the set has the positions of `first`, names and indices included,
    /// as `CSPositions::SetPositions` blends them; then every section of `first`, in order, blended with its
    /// partner in `second`, so that positions used by a loop go by the pairing of the loops; and the parameters
    /// that both have, blended. When it is not, the set is a copy of `first`, whatever `second` and `ratio` are. In
    /// both cases its scale is 1.0, no box is kept, no convex loop is built, and positions that building convex
    /// loops has added to `first` are taken out again.
    ///
    /// The coordinates of `first` and `second` stay. Convex loops may be built in them: with `convex` true those of
    /// the sections compared, and all those of `first` when the sets are not compatible. So neither set may be in
    /// use by another thread meanwhile.
    ///
    /// \param ratio   neither tested nor held to 0 to 1; beyond these it extrapolates.
    ///
    /// \param convex  what `IsCompatible` compares; the blend is always that of the exterior and interior loops.
    CrossSections(CrossSections const& first, CrossSections const& second, double ratio, bool convex);

    /// The section of this set that is the partner of `section`, with `found` true: the one at `place` when
    /// `section` is compatible with it, else the first that `section` is compatible with. One section may be the
    /// partner of several. Where there is none, `section` itself, with `found` false.
    ///
    /// Unless both this set's pool and that of `section` have names in their name index, only the one at `place` is
    /// looked at.
    ///
    /// \param section  as a rule a section of another set.
    ///
    /// \param place    as a rule the place of `section` in its own list; past the end of this one it says nothing.
    ///
    /// \param convex   what `CrossSection::IsCompatible` compares. With true, convex loops are built in `section`
    ///                 and in the sections that it is compared with, and so in this set's pool.
    CrossSection const& GetCompatibleSection(CrossSection const& section, std::uint64_t place, bool convex,
                                             bool& found) const;

    /// True when the sets have equally many sections and every section of this set has a partner in `other`.
    ///
    /// With n vertices in all this costs time in proportion to n log n, also where the sections of the two sets
    /// stand in different orders; at worst, with many sections of which some repeat a hole and others do not, to
    /// the square of the number of sections. With `convex` true, convex loops are built in the order in which a
    /// walk from section to section would ask for them, and no others.
    bool IsCompatible(CrossSections const& other, bool convex) const;

    /// @}

    /// Builds the convex loops of all sections, then writes positions and sections as indented text; does nothing
    /// when the stream has no open file. Numbers follow the format of the stream.
    ///
    /// \param prefix  stands at the start of every line; not null.
    void Dump(std::ofstream& stream, char const* prefix) const;

private:
    // Where the members stand that are not in cross_sections.cpp:
    //   From, To, ReadPositions                 section_document.cpp
    //   IsCompatible, GetCompatibleSection      blending/set_pairing.cpp
    //   the blending constructor and its steps  blending/interpolation.cpp
    //   Dump                                    dump.cpp

    /// Appends the positions that the elements of `nodes` are.
    void ReadPositions(Dom const& nodes);
    /// Multiplies all positions by `factor` and renews the box; a factor of exactly 1.0 does nothing.
    void ConvertPositions(double factor);
    /// Makes `m_bbox` the box of the pool.
    void InitBBox() const;
    /// Binds the sections that came from `source`, and so refer to its pool, to the pool of this set.
    void RebindItems(CrossSections const& source);
    /// Moves the positions that no loop uses, and so has moved, towards their partners in `second`.
    void MoveUnusedPositions(CSPositions const& second, double ratio);

    CSPositions m_positions;
    std::vector<CrossSection> m_items;
    /// The factor on the coordinates of a document; 1.0 means none.
    double m_scale = 1.0;
    /// The box of the pool when it was last worked out; the empty box while it has not been.
    mutable qel::BBox<2, double> m_bbox;
    std::map<std::string, double> m_parameters;
};

} // namespace Sectrix
} // namespace qel
