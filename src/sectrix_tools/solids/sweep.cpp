#include "sectrix_tools/solids/sweep.h"

#include "sectrix/foundation/detail/strict_arithmetic.h"
#include "sectrix/foundation/position.h"
#include "sectrix_tools/solids/boundary.h"
#include "sectrix_tools/solids/sweeping/ring_finding.h"
#include "sectrix_tools/solids/sweeping/sides.h"
#include "sectrix_tools/solids/sweeping/soundness.h"
#include "sectrix_tools/solids/sweeping/station_order.h"
#include "sectrix_tools/solids/sweeping/station_rings.h"

#include <algorithm>
#include <cmath>
#include <cstdint>
#include <map>
#include <string>
#include <utility>

namespace qel::SectrixTools {
namespace {

using namespace Solids;
using Sectrix::CrossSection;

/// The sections of a sweep, each looked at once.
class Sections {
public:
    Sections(std::vector<Station> const& stations, Findings& findings)
        : m_stations(stations), m_findings(findings) {}

    /// The rings of a station in the order of the first one's, with the feet at the ends; null where a finding says
    /// why there are none.
    std::vector<StationRing> const* RingsAt(std::size_t station) {
        CrossSection const* const section = m_stations[station].m_section;
        bool const isEnd = station == 0 || station + 1 == m_stations.size();
        auto const known = m_rings.find({section, isEnd});
        if (known != m_rings.end())
            return &known->second;
        Findings findings;
        std::vector<Ring> rings;
        if (!section)
            findings.push_back(RingError("station-without-section", "the station has no section"));
        else if (isEnd)
            rings = BoundaryOf(*section, findings).m_rings;
        else
            rings = RingsBetween(*section, findings);
        std::vector<AlignedLoop> aligned;
        if (findings.empty())
            aligned = AlignStation(*m_stations[0].m_section, *section, findings);
        if (!findings.empty()) {
            TakeOver(findings, station);
            return nullptr;
        }
        return &m_rings.emplace(std::pair(section, isEnd), OrderRings(*section, rings, aligned)).first->second;
    }

    /// By pool indices; only of the ends, once their rings are there.
    std::vector<std::array<int, 3>> const& CapOf(CrossSection const* section) const {
        return m_boundaries.at(section).m_triangles;
    }

private:
    SectionBoundary const& BoundaryOf(CrossSection const& section, Findings& findings) {
        auto const& boundary = m_boundaries.emplace(&section, Boundary(section)).first->second;
        findings = boundary.m_findings;
        return boundary;
    }
    static std::vector<Ring> RingsBetween(CrossSection const& section, Findings& findings) {
        findings = SoundnessErrors(section, false);
        return PlainRings(section, findings);
    }
    void TakeOver(Findings const& findings, std::size_t station) {
        for (Finding finding : findings) {
            finding.m_section = static_cast<int>(station);
            m_findings.push_back(std::move(finding));
        }
    }

    std::vector<Station> const& m_stations;
    Findings& m_findings;
    std::map<std::pair<CrossSection const*, bool>, std::vector<StationRing>> m_rings;
    std::map<CrossSection const*, SectionBoundary> m_boundaries;
};

Finding StationError(std::string const& code, std::string const& message, std::size_t station) {
    Finding finding = RingError(code, message);
    finding.m_section = static_cast<int>(station);
    return finding;
}

/// Appends the point of one position; false where it has no finite place, or lies behind the horizon of a placement
/// that is a perspective.
bool PlacePoint(Station const& station, int index, TriangleMesh& mesh) {
    bool found = false;
    auto const& point =
        station.m_section->Positions().GetPosition(static_cast<std::uint64_t>(index), found).Position();
    auto const& placement = station.m_placement;
    Sectrix::Position const place(point[0], point[1], 0.0, Sectrix::Matrix{placement.m_elements.data()});
    mesh.m_points.push_back({place.X(), place.Y(), place.Z()});
    return point[0] * placement[3] + point[1] * placement[7] + placement[15] > 0 && std::isfinite(place.X()) &&
           std::isfinite(place.Y()) && std::isfinite(place.Z());
}

/// Appends the points of all stations; what is in the way is added to the findings.
std::vector<PlacedStation> PlaceStations(std::vector<Station> const& stations, Sections& sections, Solid& solid) {
    std::vector<PlacedStation> placed(stations.size());
    for (std::size_t station = 0; station < stations.size(); ++station) {
        auto const* const rings = sections.RingsAt(station);
        if (!rings)
            return {};
        for (StationRing const& ring : *rings) {
            placed[station].push_back({solid.m_mesh.m_points.size(), ring.m_vertices});
            for (int const index : ring.m_indices)
                if (!PlacePoint(stations[station], index, solid.m_mesh)) {
                    solid.m_findings.push_back(StationError(
                        "placement-not-finite", "a point of the section has no finite place in space", station));
                    return {};
                }
        }
    }
    return placed;
}

/// Adds the triangles of an end, as they run in its section or against that, and the feet that stand on bridges
/// only.
void AddCap(Station const& station, std::vector<std::array<int, 3>> const& cap,
            std::vector<StationRing> const& rings, PlacedStation const& placed, bool isReversed,
            TriangleMesh& mesh) {
    std::map<int, std::uint32_t> points;
    for (std::size_t ring = 0; ring < rings.size(); ++ring)
        for (std::size_t place = 0; place < rings[ring].m_indices.size(); ++place)
            points[rings[ring].m_indices[place]] = placed[ring].Point(place);
    for (auto const& [a, b, c] : cap)
        for (int const index : {a, isReversed ? c : b, isReversed ? b : c}) {
            auto const [point, isNew] = points.emplace(index, static_cast<std::uint32_t>(mesh.m_points.size()));
            if (isNew)
                PlacePoint(station, index, mesh);
            mesh.m_triangles.push_back(point->second);
        }
}

/// 1 where all stations turn their front the way that the structure goes, -1 where all turn their back, else 0 and
/// a finding.
int CommonDirection(std::vector<PlacedStation> const& placed, Solid& solid) {
    int const direction = Direction(solid.m_mesh, placed[0], placed[1]);
    for (std::size_t place = 1; place < placed.size(); ++place)
        if (direction == 0 || Direction(solid.m_mesh, placed[place - 1], placed[place]) != direction) {
            solid.m_findings.push_back(
                StationError("stations-not-in-order",
                             "the section does not lie wholly on the far side of the one before it", place));
            return 0;
        }
    return direction;
}

} // namespace

Solid Sweep(std::vector<Station> const& stations) {
    Solid solid;
    if (stations.size() < 2) {
        solid.m_findings.push_back(RingError("too-few-stations", "a solid needs two stations"));
        return solid;
    }
    Sections sections(stations, solid.m_findings);
    auto const placed = PlaceStations(stations, sections, solid);
    int const direction = placed.empty() ? 0 : CommonDirection(placed, solid);
    if (direction != 0) {
        for (std::size_t place = 1; place < placed.size(); ++place)
            AddSides(solid.m_mesh, placed[place - 1], placed[place]);
        std::size_t const last = stations.size() - 1;
        AddCap(stations[0], sections.CapOf(stations[0].m_section), *sections.RingsAt(0), placed[0], true,
               solid.m_mesh);
        AddCap(stations[last], sections.CapOf(stations[last].m_section), *sections.RingsAt(last), placed[last],
               false, solid.m_mesh);
        for (std::size_t i = 0; direction < 0 && i < solid.m_mesh.m_triangles.size(); i += 3)
            std::swap(solid.m_mesh.m_triangles[i + 1], solid.m_mesh.m_triangles[i + 2]);
        if (!IsClosed(solid.m_mesh))
            solid.m_findings.push_back(
                RingError("loops-not-of-the-section", "caps and sides do not meet edge by edge"));
        else if (!(Volume(solid.m_mesh) > 0))
            solid.m_findings.push_back(
                RingError("stations-not-in-order", "the sections turn so far that the sides are inside out"));
    }
    if (!solid.m_findings.empty())
        solid.m_mesh = {};
    return solid;
}

} // namespace qel::SectrixTools
