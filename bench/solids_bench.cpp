#include "sectrix_tools/checks/geometry_check.h"
#include "sectrix_tools/measures/section_properties.h"
#include "sectrix_tools/solids/placement.h"
#include "sectrix_tools/solids/sweep.h"
#include "support/shape_set.h"

#include <benchmark/benchmark.h>

/// \file
/// The sweep of solids, and section properties.

using namespace qel::Sectrix;
using namespace qel::SectrixTools;

namespace {

/// Blends between two boxes, one of them 1.5 times as large.
std::vector<CrossSections> Blends(int cells, std::size_t count) {
    auto large = shapes::Box(cells);
    for (auto& point : large.points)
        point = {1.5 * point.x, 1.5 * point.y};
    auto const first = MakeSet(shapes::Box(cells)), second = MakeSet(large);
    std::vector<CrossSections> sets;
    for (std::size_t i = 0; i < count; ++i)
        sets.emplace_back(first, second, static_cast<double>(i) / static_cast<double>(count - 1), false);
    return sets;
}

/// A haunched girder of so many cells and stations.
void SweepStations(benchmark::State& state) {
    auto const sets = Blends(static_cast<int>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    auto const placements = PlacementsAlongLine({0, 0, 0}, {0, 100, 0}, sets.size());
    std::vector<Station> stations;
    for (std::size_t i = 0; i < sets.size(); ++i)
        stations.push_back({&sets[i].Items()[0], placements[i]});
    std::size_t triangles = 0;
    for (auto _ : state)
        triangles = Sweep(stations).m_mesh.m_triangles.size() / 3;
    state.counters["triangles"] = static_cast<double>(triangles);
}

/// The part of a sweep that goes into the check of its sections.
void CheckStations(benchmark::State& state) {
    auto const sets = Blends(static_cast<int>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    for (auto _ : state)
        for (auto const& set : sets)
            benchmark::DoNotOptimize(CheckGeometry(set.Items()[0]).size());
}

void PropertiesOfSections(benchmark::State& state) {
    auto const sets = Blends(static_cast<int>(state.range(0)), static_cast<std::size_t>(state.range(1)));
    for (auto _ : state)
        for (auto const& set : sets)
            benchmark::DoNotOptimize(PropertiesOf(set.Items()[0]).m_ix);
}

} // namespace

BENCHMARK(SweepStations)->Args({2, 100})->Args({2, 1000})->Args({6, 1000})->Unit(benchmark::kMillisecond);
BENCHMARK(CheckStations)->Args({2, 1000})->Unit(benchmark::kMillisecond);
BENCHMARK(PropertiesOfSections)->Args({2, 10000})->Unit(benchmark::kMillisecond);
