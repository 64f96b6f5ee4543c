#pragma once

#include <ctime>

/// \file
/// The time of one call, for benchmarks that measure the library and a peer in turn.

/// Processor time, on which other programs have less influence than on the clock on the wall.
template <class Work>
double Seconds(Work work) {
    std::clock_t const begin = std::clock();
    work();
    return static_cast<double>(std::clock() - begin) / CLOCKS_PER_SEC;
}
