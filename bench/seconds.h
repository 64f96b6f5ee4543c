#pragma once

#include <chrono>
#include <ctime>

/// \file
/// The time of one call, for benchmarks that measure the library and a peer in turn.

/// Of the processor, which other programs do not add to; too coarse for what takes less than a millisecond.
template <class Work>
double ProcessorSeconds(Work work) {
    std::clock_t const begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}

/// Of the clock on the wall.
template <class Work>
double WallSeconds(Work work) {
    auto const begin = std::chrono::steady_clock::now();
    work();
    return std::chrono::duration<double>(std::chrono::steady_clock::now() - begin).count();
}
