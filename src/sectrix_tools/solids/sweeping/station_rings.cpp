#include "sectrix_tools/solids/sweeping/station_rings.h"

#include "sectrix_tools/solids/sweeping/ring_finding.h"

#include <algorithm>
#include <set>

namespace qel::SectrixTools::Solids {

using Sectrix::CrossSection;

std::vector<Ring> PlainRings(CrossSection const& section, Findings& findings) {
    std::vector<Ring> rings;
    std::set<int> used;
    for (std::size_t loop = 0; loop <= section.InteriorLoops().size(); ++loop) {
        rings.emplace_back();
        for (auto const& vertex : LoopOf(section, loop).Vertices()) {
            if (!used.insert(vertex.Index()).second)
                findings.push_back(
                    RingError("position-used-twice", "two vertices have one position", loop, rings.back().size()));
            rings.back().push_back(vertex.Index());
        }
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
