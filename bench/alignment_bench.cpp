#include "support/shape_set.h"

#include <benchmark/benchmark.h>
#include <string>

using namespace qel::Sectrix;

namespace {

void AddNames(CSPositions& pool, std::string const& name, int size) {
    for (int i = 0; i < size; ++i)
        pool.AddPosition(name + "." + std::to_string(i), {double(i), double(i) * 0.5});
}

/// The indices of `size` positions from `base` on, the one `shift` places behind the first in front.
std::vector<int> Turned(int base, int size, int shift) {
    std::vector<int> indices;
    for (int i = 0; i < size; ++i)
        indices.push_back(base + (i + shift) % size);
    return indices;
}

int const kOutlineCorners = 12, kCellCorners = 6;

/// Box girders of named corners, in the order of their numbers or the opposite one.
CrossSections Girders(int count, bool isReversed, int shift) {
    CSPositions pool;
    std::vector<shapes::Loops> sections;
    for (int i = 0; i < count; ++i) {
        int const first = pool.Count();
        AddNames(pool, "box" + std::to_string(isReversed ? count - 1 - i : i), kOutlineCorners + kCellCorners);
        sections.push_back(
            {Turned(first, kOutlineCorners, shift), Turned(first + kOutlineCorners, kCellCorners, shift)});
    }
    return shapes::MakeSet(pool, sections);
}

void AlignLoops(benchmark::State& state) {
    int const size = static_cast<int>(state.range(0));
    CSPositions pool;
    AddNames(pool, "corner", size);
    Loop const first(pool, true);
    auto const set = shapes::MakeSet(pool, {{Turned(0, size, size / 3)}});
    Loop const& second = set.Items()[0].ExteriorLoop();
    bool ok = false;
    for (auto _ : state)
        benchmark::DoNotOptimize(first.GetOtherShift(second, ok));
    if (!ok)
        state.SkipWithError("the loops do not line up");
    state.SetComplexityN(size);
}
BENCHMARK(AlignLoops)->Arg(20)->RangeMultiplier(2)->Range(1250, 40000)->Complexity(benchmark::oNLogN);

void CompareSets(benchmark::State& state, bool isReversed) {
    int const count = static_cast<int>(state.range(0));
    auto const first = Girders(count, false, 0);
    auto const second = Girders(count, isReversed, 3);
    for (auto _ : state)
        if (!first.IsCompatible(second, false))
            state.SkipWithError("the sets are not compatible");
    state.SetComplexityN(count);
}
BENCHMARK_CAPTURE(CompareSets, SameOrder, false)->RangeMultiplier(2)->Range(1250, 20000)->Complexity();
BENCHMARK_CAPTURE(CompareSets, OppositeOrder, true)->RangeMultiplier(2)->Range(1250, 20000)->Complexity();

void CopySet(benchmark::State& state) {
    auto const set = Girders(static_cast<int>(state.range(0)), false, 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(CrossSections(set));
}
BENCHMARK(CopySet)->Arg(10000);

void BlendSets(benchmark::State& state, bool isReversed) {
    int const count = static_cast<int>(state.range(0));
    auto const first = Girders(count, false, 0);
    auto const second = Girders(count, isReversed, 3);
    for (auto _ : state)
        benchmark::DoNotOptimize(CrossSections(first, second, 0.25, false));
}
BENCHMARK_CAPTURE(BlendSets, SameOrder, false)->Arg(10000);
BENCHMARK_CAPTURE(BlendSets, OppositeOrder, true)->Arg(10000);

} // namespace
