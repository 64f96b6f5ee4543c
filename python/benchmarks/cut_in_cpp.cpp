/// \file
/// Reads a document and cuts all its sections, several times, and prints the least time of either in seconds.

#include "sectrix/sections/cross_sections.h"

#include <algorithm>
#include <chrono>
#include <cstdlib>
#include <fstream>
#include <iostream>
#include <iterator>
#include <sstream>

using namespace qel::Sectrix;

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: cut_in_cpp DOCUMENT TIMES\n";
        return 2;
    }
    std::ifstream file(argv[1], std::ios::binary);
    std::string const text(std::istreambuf_iterator<char>(file), {});
    double reading = 1e9, cutting = 1e9;
    for (int turn = 0; turn < std::atoi(argv[2]); ++turn) {
        auto const start = std::chrono::steady_clock::now();
        std::istringstream stream(text);
        CrossSections set;
        set.From(stream);
        auto const middle = std::chrono::steady_clock::now();
        for (auto const& section : set.Items())
            section.ConvexLoops();
        auto const end = std::chrono::steady_clock::now();
        reading = std::min(reading, std::chrono::duration<double>(middle - start).count());
        cutting = std::min(cutting, std::chrono::duration<double>(end - middle).count());
    }
    std::cout << reading << ' ' << cutting << '\n';
    return 0;
}
