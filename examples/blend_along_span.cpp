/// \file
/// Makes the sections on the way from a pier to midspan, and lists how deep they are.

#include "sectrix/sections/cross_sections.h"

#include <fstream>
#include <iostream>

using namespace qel::Sectrix;

namespace {

CrossSections Read(char const* path) {
    std::ifstream document(path, std::ios::binary);
    CrossSections set;
    set.From(document);
    return set;
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 3) {
        std::cerr << "usage: blend_along_span PIER MIDSPAN\n";
        return 2;
    }
    CrossSections const pier = Read(argv[1]);
    CrossSections const midspan = Read(argv[2]);
    if (pier.Items().empty() || !pier.IsCompatible(midspan, false)) {
        std::cerr << "the two are not built alike\n";
        return 1;
    }
    int const steps = 6;
    for (int step = 0; step <= steps; ++step) {
        double const part = static_cast<double>(step) / steps;
        // The soffit is a parabola that is level at midspan.
        CrossSections const station(pier, midspan, 1.0 - (1.0 - part) * (1.0 - part), false);
        auto const box = station.Items()[0].BBox();
        std::cout << step << '/' << steps << " of the way: " << box.m_max[1] - box.m_min[1] << " deep, "
                  << station.Items()[0].ConvexLoops().size() << " convex loops\n";
    }
    return 0;
}
