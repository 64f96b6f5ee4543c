#include "sectrix_tools/solids/boundary.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix_tools/solids/sweeping/cap_edges.h"
#include "sectrix_tools/solids/sweeping/ring_finding.h"
#include "sectrix_tools/solids/sweeping/soundness.h"
#include "sectrix_tools/solids/sweeping/station_rings.h"

#include <cstdint>
#include <string>

namespace qel::SectrixTools {
namespace {

using Sectrix::CrossSection;
using Sectrix::Loop;
using Solids::CapEdges;
using Solids::Point2;
using Solids::Ring;
using Solids::RingError;

bool HasAllPositions(CrossSection const& section) {
    for (Loop const& loop : section.ConvexLoops())
        for (auto const& vertex : loop.Vertices())
            if (static_cast<std::uint64_t>(vertex.Index()) >=
                static_cast<std::uint64_t>(section.Positions().Count()))
                return false;
    return true;
}

/// Cuts the polygons into triangles, and returns whether all of them could be.
bool FillTriangles(CapEdges const& edges, Sectrix::CSPositions const& positions,
                   std::vector<std::array<int, 3>>& triangles) {
    for (Ring const& polygon : edges.Polygons()) {
        std::vector<Point2> points;
        for (int const index : polygon) {
            bool found = false;
            points.push_back(positions.GetPosition(static_cast<std::uint64_t>(index), found).Position());
        }
        auto const parts = Solids::Triangulate(points, edges.Rounding());
        if (parts.size() + 2 != polygon.size())
            return false;
        for (auto const& [a, b, c] : parts)
            triangles.push_back({polygon[a], polygon[b], polygon[c]});
    }
    return true;
}

SectionBoundary Refused(Finding const& finding) {
    return {{}, {}, {finding}};
}

} // namespace

SectionBoundary Boundary(CrossSection const& section) {
    SectionBoundary boundary;
    boundary.m_findings = Solids::SoundnessErrors(section, true);
    auto rings = Solids::PlainRings(section, boundary.m_findings);
    if (!boundary.m_findings.empty())
        return boundary;
    std::string const code = "loops-not-of-the-section";
    if (!HasAllPositions(section))
        return Refused(RingError(code, "the convex loops have a vertex without a position"));
    CapEdges edges(section);
    for (std::size_t place = 0; place < rings.size(); ++place)
        if (!edges.SplitRing(rings[place]))
            return Refused(RingError(code, "the convex loops do not have every edge of the loop", place));
    if (!edges.CloseSeams())
        return Refused(RingError(code, "the convex loops do not meet edge by edge"));
    std::vector<std::array<int, 3>> triangles;
    if (!FillTriangles(edges, section.Positions(), triangles))
        return Refused(RingError("loop-not-convex", "a loop could not be cut into triangles"));
    boundary.m_rings = std::move(rings);
    boundary.m_triangles = std::move(triangles);
    return boundary;
}

} // namespace qel::SectrixTools
