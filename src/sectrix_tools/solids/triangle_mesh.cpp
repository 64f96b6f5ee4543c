#include "sectrix_tools/solids/triangle_mesh.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/solids/sweeping/space.h"

#include <algorithm>
#include <array>

namespace qel::SectrixTools {
namespace {

using Solids::Cross;
using Solids::Difference;
using Solids::Dot;
using Solids::Length;

using Corners = std::array<std::uint32_t, 3>;

/// Calls `visit` for each triangle whose corners are there.
template <class Visit>
void ForEachTriangle(TriangleMesh const& mesh, Visit const& visit) {
    auto const& corners = mesh.m_triangles;
    for (std::size_t i = 0; i + 2 < corners.size(); i += 3)
        if (std::max({corners[i], corners[i + 1], corners[i + 2]}) < mesh.m_points.size())
            visit(mesh.m_points[corners[i]], mesh.m_points[corners[i + 1]], mesh.m_points[corners[i + 2]]);
}

} // namespace

double Volume(TriangleMesh const& mesh) {
    double sixfold = 0.0;
    ForEachTriangle(mesh, [&](auto const& a, auto const& b, auto const& c) {
        auto const& origin = mesh.m_points[0];
        sixfold += Dot(Difference(a, origin), Cross(Difference(b, origin), Difference(c, origin)));
    });
    return sixfold / 6;
}

double SurfaceArea(TriangleMesh const& mesh) {
    double twice = 0.0;
    ForEachTriangle(mesh, [&](auto const& a, auto const& b, auto const& c) {
        twice += Length(Cross(Difference(b, a), Difference(c, a)));
    });
    return twice / 2;
}

bool IsClosed(TriangleMesh const& mesh) {
    auto const& corners = mesh.m_triangles;
    if (corners.empty() || corners.size() % 3 != 0)
        return false;
    // Edges by their ends, those towards the higher place and those towards the lower.
    std::vector<std::uint64_t> upward, downward;
    upward.reserve(corners.size() / 2);
    downward.reserve(corners.size() / 2);
    for (std::size_t i = 0; i < corners.size(); ++i) {
        std::uint64_t const from = corners[i], to = corners[i % 3 == 2 ? i - 2 : i + 1];
        if (from == to || from >= mesh.m_points.size())
            return false;
        (from < to ? upward : downward).push_back(std::min(from, to) << 32 | std::max(from, to));
    }
    std::sort(upward.begin(), upward.end());
    std::sort(downward.begin(), downward.end());
    return upward == downward && std::adjacent_find(upward.begin(), upward.end()) == upward.end();
}

} // namespace qel::SectrixTools
