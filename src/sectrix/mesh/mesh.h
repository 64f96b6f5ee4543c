#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/position.h"
#include "sectrix/foundation/value_types.h"

#include <cstdint>
#include <string>
#include <vector>

/// \file
/// Indexed triangle meshes.

struct aiMesh;

namespace qel::Sectrix {

/// A named list of triangles over a list of positions. It is made empty, filled by `fromOBJ`, and otherwise only
/// read.
class SECTRIX_EXPORT Mesh {
public:
    /// A mesh without triangles, its transform the identity.
    ///
    /// \param key, name  end at their first zero; not null.
    Mesh(wchar_t const* key, wchar_t const* name);
    /// A full copy.
    Mesh(Mesh const& other) = default;
    /// A copy; with `merge` true, one in which positions closer than 0.0001 are one, and positions that no triangle
    /// uses are gone.
    ///
    /// The positions are gone through in their order. One that is `Near` to a position kept before it becomes the
    /// first such position; else it is kept itself if a triangle uses it. So nothing is moved or averaged, the
    /// order stays, and of a row of three each near to its neighbours only, the third stays on its own. A position
    /// that is not a number is near to everything. Triangles that have become degenerate stay in their place; an
    /// index of no position is left out, which shifts the corners behind it.
    ///
    /// Defined for fewer than 2^31 positions and indices. Costs time about linear in their number, and beside
    /// the copy itself at most 41 bytes a position, freed at the end.
    Mesh(Mesh const& other, bool merge);
    /// Takes texts and lists over and leaves `other` with none; `other` keeps its transform.
    Mesh(Mesh&& other) noexcept;
    /// When memory runs out the mesh keeps what it had. Assigned to itself it is not touched.
    Mesh& operator=(Mesh const& other);
    /// Takes texts and lists over and leaves `other` with none; `other` keeps its transform.
    Mesh& operator=(Mesh&& other) noexcept;

    /// The corners of the triangles, three after three, in the winding order of the source, as indices into
    /// `Positions`: never negative, but not tested against the number of positions.
    std::vector<std::int64_t> const& Indices() const { return m_indices; }
    /// The identifying key given at construction.
    std::wstring const& Key() const { return m_key; }
    /// The display name given at construction.
    std::wstring const& Name() const { return m_name; }
    /// With the transform already applied.
    std::vector<Position> const& Positions() const { return m_positions; }
    /// What the positions were made with; not to be applied to them again.
    Mat<4, double> const& Transform() const { return m_transform; }

    /// True, with the corners of the box around all positions, used or not; false, with `min` and `max` as they
    /// were, when there are none. A coordinate that is not a number takes the place of the border found so far, and
    /// the next number takes its place. Costs one pass.
    bool BoundingBox(Position& min, Position& max) const;

    /// Appends the vertices of an imported mesh, each transformed by `matrix`, and the corners of its triangles,
    /// and makes `matrix` the mesh's transform.
    ///
    /// Faces that are not triangles are passed over. Corners keep the values that they have in `mesh`, so those of
    /// a second import refer to the positions of the first. When memory runs out what was appended stays, and so
    /// does the old transform.
    ///
    /// Costs one pass, with room for exactly what is appended, a triangle for every face. A mesh that has content
    /// already is moved to the new room as a whole: many small imports into one mesh cost the square of their
    /// number.
    ///
    /// \param mesh  not null; its vertices and faces are read, nothing else.
    void fromOBJ(aiMesh const* mesh, Matrix const& matrix);

private:
    std::wstring m_key;
    std::wstring m_name;
    std::vector<Position> m_positions;
    std::vector<std::int64_t> m_indices;
    Mat<4, double> m_transform;
};

} // namespace qel::Sectrix
