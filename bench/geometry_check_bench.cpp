#include "geos_polygon.h"
#include "seconds.h"
#include "sectrix_tools/checks/geometry_check.h"
#include "support/shape_set.h"

#include <benchmark/benchmark.h>
#include <limits>
#include <string>

/// \file
/// The check of geometry beside that of GEOS, which says whether a polygon is valid and knows of no cut.

using shapes::Shape;

namespace {

/// Both in turn; `ratio` is that of their best times, in seconds of the processor.
void BesideThePeer(benchmark::State& state, Shape const& shape) {
    auto const set = shapes::MakeSet(shape);
    GeosPolygon const peer(shape);
    double best = std::numeric_limits<double>::max(), peerBest = best;
    qel::SectrixTools::Findings findings;
    char isValid = 2;
    for (auto _ : state) {
        double const seconds = ProcessorSeconds([&] { findings = qel::SectrixTools::CheckGeometry(set); });
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        peerBest = std::min(peerBest, ProcessorSeconds([&] { isValid = GEOSisValid(peer.Get()); }));
    }
    state.counters["vertices"] = static_cast<double>(shape.points.size());
    state.counters["findings"] = static_cast<double>(findings.size());
    state.counters["peer_valid"] = isValid;
    state.counters["best_ms"] = best * 1e3;
    state.counters["ratio"] = best / peerBest;
}

struct Case {
    char const* m_name;
    Shape m_shape;
};

/// Corners anywhere, so that nearly all edges cross.
Shape Tangle(std::size_t vertices) {
    shapes::Random random(8);
    std::vector<shapes::Point> points(vertices);
    for (auto& point : points)
        point = {shapes::Uniform(random, 0, 1000), shapes::Uniform(random, 0, 1000)};
    Shape shape;
    shape.AddLoop(points);
    return shape;
}

[[maybe_unused]] bool const registered = [] {
    shapes::Random random(5);
    for (auto const& [name, shape] :
         {Case{"star", shapes::StarWithHoles(random, 100000, 0)}, Case{"comb", shapes::Comb(33333)},
          Case{"leaning_comb", shapes::LeaningComb(2000)}, Case{"spiral", shapes::Spiral(50)},
          Case{"coast", shapes::Coast(random, 60000, 2500)}, Case{"space_filling_curve", shapes::Hilbert(8)},
          Case{"plate", shapes::Plate(158, 158)}, Case{"tangle", Tangle(2000)}})
        benchmark::RegisterBenchmark((std::string("check/") + name).c_str(), BesideThePeer, shape)
            ->UseManualTime()
            ->Iterations(3)
            ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
