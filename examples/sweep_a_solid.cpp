/// \file
/// Sweeps the sections from a pier to midspan into a closed solid, and measures it.

#include "sectrix/sections/cross_sections.h"
#include "sectrix_tools/solids/placement.h"
#include "sectrix_tools/solids/sweep.h"

#include <deque>
#include <fstream>
#include <iostream>

using namespace qel;

namespace {

Sectrix::CrossSections Read(char const* path) {
    std::ifstream document(path, std::ios::binary);
    Sectrix::CrossSections set;
    set.From(document);
    return set;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: sweep_a_solid PIER MIDSPAN\n";
        return 2;
    }
    auto const pier = Read(argv[1]);
    auto const midspan = Read(argv[2]);
    if (pier.Items().empty() || !pier.IsCompatible(midspan, false)) {
        std::cerr << "the two are not built alike\n";
        return 1;
    }
    std::size_t const count = 11;
    auto const placements = SectrixTools::PlacementsAlongLine({0, 0, 0}, {0, 30, 0}, count);
    std::deque<Sectrix::CrossSections> sets; // whose sections stay where they are
    std::vector<SectrixTools::Station> stations;
    for (std::size_t i = 0; i < count; ++i) {
        sets.emplace_back(pier, midspan, static_cast<double>(i) / (count - 1), false);
        stations.push_back({&sets.back().Items()[0], placements[i]});
    }
    auto const solid = SectrixTools::Sweep(stations);
    for (auto const& finding : solid.m_findings)
        std::cerr << finding.m_message << '\n';
    std::cout << solid.m_mesh.m_points.size() << " points, " << solid.m_mesh.m_triangles.size() / 3
              << " triangles, volume " << SectrixTools::Volume(solid.m_mesh) << ", closed: " << std::boolalpha
              << SectrixTools::IsClosed(solid.m_mesh) << '\n';
    return solid.m_findings.empty() ? 0 : 1;
}
