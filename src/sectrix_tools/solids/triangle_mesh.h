#pragma once

#include "sectrix/foundation/export.h"
#include "sectrix/foundation/value_types.h"

#include <cstdint>
#include <vector>

/// \file
/// Triangles over shared points, as plain arrays.

namespace qel::SectrixTools {

/// A list of points and the corners of triangles by their places in it.
///
/// Both lists lie in memory as renderers and exporters take them: three doubles a point, three unsigned numbers of
/// 32 bits a triangle.
struct TriangleMesh {
    /// The points, each once.
    std::vector<Vec<3, double>> m_points;
    /// Three places in the list of points a triangle, counter-clockwise as seen from outside.
    std::vector<std::uint32_t> m_triangles;
};

/// The volume that the triangles enclose; negative where they face inward. It has a meaning only where the mesh is
/// closed. A triangle with a corner that is not in the list of points adds nothing.
///
/// Summed about the first point, so that coordinates far from the origin cost no digits.
SECTRIX_TOOLS_EXPORT double Volume(TriangleMesh const& mesh);

/// The sum of the areas of the triangles. One with a corner that is not in the list of points adds nothing.
SECTRIX_TOOLS_EXPORT double SurfaceArea(TriangleMesh const& mesh);

/// True when every edge is used by two triangles, once in each direction, so that the mesh is watertight and its
/// triangles all face the same way, inward or outward. False for a mesh without triangles, with a number of corners
/// that is no multiple of three, with a corner that is not in the list of points, or with a triangle that has one
/// point at two corners. Coordinates are not looked at.
///
/// Costs n log n of the triangles.
SECTRIX_TOOLS_EXPORT bool IsClosed(TriangleMesh const& mesh);

} // namespace qel::SectrixTools
