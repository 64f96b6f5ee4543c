#include "sectrix_tools/solids/sweeping/sides.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/solids/sweeping/space.h"

namespace qel::SectrixTools::Solids {
namespace {

/// Of two edges whose squares differ by less than this in proportion, the first is taken, so that rounding does not
/// choose.
constexpr double kEqualEdges = 1e-9;

double SquareOfDistance(TriangleMesh const& mesh, std::uint32_t from, std::uint32_t to) {
    Point3 const edge = Difference(mesh.m_points[to], mesh.m_points[from]);
    return Dot(edge, edge);
}

/// Fills the strip between two edges, each a row of points, with triangles.
void AddSide(TriangleMesh& mesh, PlacedRing const& lower, PlacedRing const& upper, std::size_t vertex) {
    std::size_t i = lower.m_vertices[vertex], j = upper.m_vertices[vertex];
    std::size_t const lowerEnd = lower.m_vertices[vertex + 1], upperEnd = upper.m_vertices[vertex + 1];
    while (i < lowerEnd || j < upperEnd) {
        std::uint32_t const a = lower.Point(i), b = upper.Point(j);
        bool isLower = j == upperEnd;
        if (i < lowerEnd && j < upperEnd)
            isLower = SquareOfDistance(mesh, lower.Point(i + 1), b) <=
                      SquareOfDistance(mesh, upper.Point(j + 1), a) * (1 + kEqualEdges);
        std::uint32_t const next = isLower ? lower.Point(++i) : upper.Point(++j);
        mesh.m_triangles.insert(mesh.m_triangles.end(), {a, next, b});
    }
}

} // namespace

void AddSides(TriangleMesh& mesh, PlacedStation const& lower, PlacedStation const& upper) {
    for (std::size_t ring = 0; ring < lower.size(); ++ring)
        for (std::size_t vertex = 0; vertex < lower[ring].VertexCount(); ++vertex)
            AddSide(mesh, lower[ring], upper[ring], vertex);
}

} // namespace qel::SectrixTools::Solids
