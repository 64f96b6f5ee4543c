#include "sectrix_tools/solids/sweeping/station_rings.h"

#include "sectrix_tools/solids/sweeping/ring_finding.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <set>

namespace qel::SectrixTools::Solids {

using Sectrix::CrossSection;

std::vector<Ring> PlainRings(CrossSection const& section, Findings& findings) {
    std::vector<Ring> rings;
    std::set<int> used;
    for (std::size_t loop = 0; loop <= section.InteriorLoops().size(); ++loop) {
        Ring ring;
        for (auto const& vertex : LoopOf(section, loop).Vertices()) {
            bool found = false;
            auto const& point =
                section.Positions().GetPosition(static_cast<std::uint64_t>(vertex.Index()), found).Position();
            auto const refuse = [&](char const* code, char const* message) {
                findings.push_back(RingError(code, message, loop, ring.size()));
            };
            if (!found)
                refuse("index-out-of-range", "a vertex has no position");
            else if (!std::isfinite(point[0]) || !std::isfinite(point[1]))
                refuse("coordinate-not-finite", "a coordinate is not finite");
            else if (!used.insert(vertex.Index()).second)
                refuse("position-used-twice", "two vertices have one position");
            ring.push_back(vertex.Index());
        }
        if (ring.size() < 3)
            findings.push_back(RingError("too-few-vertices", "a loop has fewer than three vertices", loop));
        rings.push_back(std::move(ring));
    }
    return rings;
}

std::vector<StationRing> OrderRings(CrossSection const& section, std::vector<Ring> const& rings,
                                    std::vector<AlignedLoop> const& aligned) {
    std::vector<StationRing> ordered;
    for (AlignedLoop const& loop : aligned) {
        StationRing ring{rings[loop.m_loop], {}};
        auto const& vertices = LoopOf(section, loop.m_loop).Vertices();
        std::rotate(ring.m_indices.begin(),
                    std::find(ring.m_indices.begin(), ring.m_indices.end(), vertices[loop.m_vertex].Index()),
                    ring.m_indices.end());
        for (std::size_t place = 0; place < ring.m_indices.size(); ++place) {
            auto const vertex = (loop.m_vertex + ring.m_vertices.size()) % vertices.size();
            if (ring.m_indices[place] == vertices[vertex].Index())
                ring.m_vertices.push_back(place);
        }
        ring.m_vertices.push_back(ring.m_indices.size());
        ordered.push_back(std::move(ring));
    }
    return ordered;
}

} // namespace qel::SectrixTools::Solids
