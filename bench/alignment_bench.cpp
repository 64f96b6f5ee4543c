#include "sectrix/sections/cross_sections.h"

#include <benchmark/benchmark.h>
#include <string>

using namespace qel::Sectrix;

namespace {

void AddNames(CSPositions& pool, std::string const& name, int size) {
    for (int i = 0; i < size; ++i)
        pool.AddPosition(name + "." + std::to_string(i), {double(i), double(i) * 0.5});
}

/// A loop over `size` positions from `base` on, which starts `shift` places behind the first.
void FillLoop(Loop& loop, int base, int size, int shift) {
    for (int i = 0; i < size; ++i)
        loop.AddVertex(base + (i + shift) % size, true);
}

int const kOutlineCorners = 12, kCellCorners = 6;

/// Box girders of named corners, in the order of their numbers or the opposite one.
CrossSections MakeSet(int count, bool isReversed, int shift) {
    CSPositions pool;
    for (int i = 0; i < count; ++i)
        AddNames(pool, "box" + std::to_string(isReversed ? count - 1 - i : i), kOutlineCorners + kCellCorners);
    CrossSections set(pool, false);
    auto& items = set.GetItems();
    items.resize(static_cast<std::size_t>(count), CrossSection(items[0]));
    for (int i = 0; i < count; ++i) {
        auto& section = items[static_cast<std::size_t>(i)];
        int const first = i * (kOutlineCorners + kCellCorners);
        FillLoop(section.GetExteriorLoop(), first, kOutlineCorners, shift);
        FillLoop(section.AddInteriorLoop(), first + kOutlineCorners, kCellCorners, shift);
    }
    return set;
}

void AlignLoops(benchmark::State& state) {
    int const size = static_cast<int>(state.range(0));
    CSPositions pool;
    AddNames(pool, "corner", size);
    Loop const first(pool, true);
    Loop second(pool, false);
    FillLoop(second, 0, size, size / 3);
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
    auto const first = MakeSet(count, false, 0);
    auto const second = MakeSet(count, isReversed, 3);
    for (auto _ : state)
        if (!first.IsCompatible(second, false))
            state.SkipWithError("the sets are not compatible");
    state.SetComplexityN(count);
}
BENCHMARK_CAPTURE(CompareSets, SameOrder, false)->RangeMultiplier(2)->Range(1250, 20000)->Complexity();
BENCHMARK_CAPTURE(CompareSets, OppositeOrder, true)->RangeMultiplier(2)->Range(1250, 20000)->Complexity();

void CopySet(benchmark::State& state) {
    auto const set = MakeSet(static_cast<int>(state.range(0)), false, 0);
    for (auto _ : state)
        benchmark::DoNotOptimize(CrossSections(set));
}
BENCHMARK(CopySet)->Arg(10000);

void BlendSets(benchmark::State& state, bool isReversed) {
    int const count = static_cast<int>(state.range(0));
    auto const first = MakeSet(count, false, 0);
    auto const second = MakeSet(count, isReversed, 3);
    for (auto _ : state)
        benchmark::DoNotOptimize(CrossSections(first, second, 0.25, false));
}
BENCHMARK_CAPTURE(BlendSets, SameOrder, false)->Arg(10000);
BENCHMARK_CAPTURE(BlendSets, OppositeOrder, true)->Arg(10000);

} // namespace
