#include "geos_polygon.h"
#include "seconds.h"
#include "support/shape_set.h"

#include <benchmark/benchmark.h>
#include <cmath>
#include <limits>
#include <string>
#include <thread>

/// \file
/// The building of convex loops: against the constrained Delaunay triangulation of GEOS, by size, and on threads.

using namespace qel::Sectrix;
using shapes::MakeSet;
using shapes::Shape;

namespace {

void Build(CrossSections& set) {
    benchmark::DoNotOptimize(set.Items()[0].ConvexLoops().data());
}

/// The seconds that the peer takes; without end where it gives no answer.
template <class Clock>
double Triangulate(GeosPolygon const& polygon, Clock const& clock) {
    GEOSGeometry* triangles = nullptr;
    double const seconds = clock([&] { triangles = GEOSConstrainedDelaunayTriangulation(polygon.Get()); });
    GEOSGeom_destroy(triangles);
    return triangles ? seconds : std::numeric_limits<double>::max();
}

/// Library and peer in turn; `ratio` is that of their best times, in seconds of the processor for all but the
/// shortest, 0 where the peer gives no answer.
void BesideThePeer(benchmark::State& state, Shape const& shape) {
    auto set = MakeSet(shape);
    GeosPolygon const peer(shape);
    auto const clock = [isLong = shape.points.size() > 100](auto const& work) {
        return isLong ? ProcessorSeconds(work) : WallSeconds(work);
    };
    double best = std::numeric_limits<double>::max(), peerBest = best;
    for (auto _ : state) {
        set.ResetConvexLoops();
        double const seconds = clock([&set] { Build(set); });
        state.SetIterationTime(seconds);
        best = std::min(best, seconds);
        peerBest = std::min(peerBest, Triangulate(peer, clock));
    }
    state.counters["vertices"] = static_cast<double>(shape.points.size());
    state.counters["loops"] = static_cast<double>(set.Items()[0].ConvexLoops().size());
    state.counters["best_us"] = best * 1e6;
    state.counters["ratio"] = peerBest < std::numeric_limits<double>::max() ? best / peerBest : 0.0;
}

/// One family at 1,000, 10,000 and 100,000 vertices; `exponent` is that of the growth, over each step. A family
/// that takes its size in other steps is measured by the vertices that it has.
void Growth(benchmark::State& state, Shape (*make)(std::size_t)) {
    double vertices[3] = {}, seconds[3] = {};
    for (auto _ : state)
        for (std::size_t step = 0, size = 1000; step < 3; ++step, size *= 10) {
            auto const shape = make(size);
            auto set = MakeSet(shape);
            vertices[step] = static_cast<double>(shape.points.size());
            seconds[step] = std::numeric_limits<double>::max();
            for (int repetition = 0; repetition < 3; ++repetition) {
                set.ResetConvexLoops();
                seconds[step] = std::min(seconds[step], ProcessorSeconds([&set] { Build(set); }));
            }
        }
    auto const exponent = [&](int step) {
        return std::log(seconds[step + 1] / seconds[step]) / std::log(vertices[step + 1] / vertices[step]);
    };
    state.counters["ms_1k"] = seconds[0] * 1e3;
    state.counters["ms_10k"] = seconds[1] * 1e3;
    state.counters["ms_100k"] = seconds[2] * 1e3;
    state.counters["exponent_to_10k"] = exponent(0);
    state.counters["exponent_to_100k"] = exponent(1);
}

/// Four distinct sets on one thread and on two: `speedup` is the ratio of the best times, `work` that of the
/// processor's time on two threads to that on one, which stays near 1 where nothing is shared, on a busy machine
/// too.
void OnTwoThreads(benchmark::State& state) {
    shapes::Random random(5);
    std::vector<CrossSections> sets;
    for (int i = 0; i < 4; ++i)
        sets.push_back(MakeSet(shapes::StarWithHoles(random, 20000, 200)));
    auto const build = [&sets](std::size_t from, std::size_t to) {
        for (; from < to; ++from)
            Build(sets[from]);
    };
    auto const measure = [&sets](auto const& work, double& best, double& bestWork) {
        for (auto& set : sets)
            set.ResetConvexLoops();
        bestWork = std::min(bestWork, ProcessorSeconds([&] { best = std::min(best, WallSeconds(work)); }));
    };
    double one = std::numeric_limits<double>::max(), two = one, workOfOne = one, workOfTwo = one;
    for (auto _ : state) {
        measure([&] { build(0, 4); }, one, workOfOne);
        measure(
            [&] {
                std::thread other([&] { build(2, 4); });
                build(0, 2);
                other.join();
            },
            two, workOfTwo);
    }
    state.counters["speedup"] = one / two;
    state.counters["work"] = workOfTwo / workOfOne;
}

/// A star with a core that is free of corners, and holes in it.
Shape Star(std::size_t vertices, std::size_t holes) {
    shapes::Random random(5);
    return shapes::StarWithHoles(random, vertices - 6 * holes, holes);
}

Shape HilbertOfAbout(std::size_t vertices) {
    return shapes::Hilbert(vertices < 2000 ? 5 : vertices < 20000 ? 6 : 8);
}

Shape SquarePlate(std::size_t vertices) {
    auto const side = static_cast<std::size_t>(std::sqrt(static_cast<double>(vertices) / 4));
    return shapes::Plate(side, side);
}

Shape CoastOf(std::size_t vertices) {
    shapes::Random random(6);
    return shapes::Coast(random, vertices / 2, vertices / 32);
}

Shape CircleOf(std::size_t vertices) {
    shapes::Random random(7);
    return shapes::CircleWithHoles(random, vertices / 2, vertices / 12);
}

struct Ratio {
    char const* m_name;
    Shape m_shape;
};

struct Family {
    char const* m_name;
    Shape (*m_make)(std::size_t);
};

[[maybe_unused]] bool const registered = [] {
    for (auto const& [name, shape] :
         {Ratio{"girder_9", shapes::NineGirder()}, Ratio{"girder_12", shapes::Girder()},
          Ratio{"box_1_cell", shapes::Box(1)}, Ratio{"box_2_cells", shapes::Box(2)},
          Ratio{"box_4_cells", shapes::Box(4)}, Ratio{"box_6_cells", shapes::Box(6)},
          Ratio{"star_200", Star(200, 4)}, Ratio{"star_600", Star(600, 10)}, Ratio{"star_1000", Star(1000, 15)},
          Ratio{"star_2000", Star(2000, 30)}, Ratio{"star_20000", Star(20000, 300)},
          Ratio{"coast_1500", CoastOf(1500)}, Ratio{"plate_1500_holes", shapes::Plate(50, 30)}})
        benchmark::RegisterBenchmark((std::string("ratio/") + name).c_str(), BesideThePeer, shape)
            ->UseManualTime()
            ->MinTime(0.05)
            ->Unit(benchmark::kMicrosecond);
    for (auto const& [name, make] :
         {Family{"star", [](std::size_t n) { return Star(n, n / 100); }},
          Family{"star_without_holes", [](std::size_t n) { return Star(n, 0); }},
          Family{"comb", [](std::size_t n) { return shapes::Comb(n / 3); }},
          Family{"leaning_comb", [](std::size_t n) { return shapes::LeaningComb(n / 2); }},
          Family{"spiral", [](std::size_t n) { return shapes::Spiral(n / 2); }},
          Family{"space_filling_curve", HilbertOfAbout}, Family{"coast", CoastOf}, Family{"plate", SquarePlate},
          Family{"row_of_holes", [](std::size_t n) { return shapes::Plate(n / 4, 1); }},
          Family{"column_of_holes", [](std::size_t n) { return shapes::Plate(1, n / 4); }},
          Family{"notched_circle", shapes::NotchedCircle}, Family{"circle_with_holes", CircleOf}})
        benchmark::RegisterBenchmark((std::string("growth/") + name).c_str(), Growth, make)
            ->Iterations(1)
            ->Unit(benchmark::kMillisecond);
    benchmark::RegisterBenchmark("threads/four_sets", OnTwoThreads)
        ->Iterations(20)
        ->UseRealTime()
        ->Unit(benchmark::kMillisecond);
    return true;
}();

} // namespace
