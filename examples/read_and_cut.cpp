/// \file
/// Reads a document of sections and lists the convex loops that cover each of them.

#include "sectrix/sections/cross_sections.h"

#include <fstream>
#include <iostream>

using namespace qel::Sectrix;

namespace {

void List(CrossSection const& section) {
    std::cout << section.AssemblyPartName() << ": " << section.InteriorLoops().size() << " holes, "
              << section.ConvexLoops().size() << " convex loops\n";
    for (Loop const& loop : section.ConvexLoops()) {
        for (Vertex const& vertex : loop.Vertices()) {
            bool found = false;
            auto const index = static_cast<std::uint64_t>(vertex.Index());
            auto const& point = section.Positions().GetPosition(index, found).Position();
            std::cout << "  (" << point[0] << ", " << point[1] << ')';
        }
        std::cout << '\n';
    }
}

} // namespace

int main(int argc, char** argv) {
    if (argc != 2) {
        std::cerr << "usage: read_and_cut DOCUMENT\n";
        return 2;
    }
    std::ifstream document(argv[1], std::ios::binary);
    CrossSections set(0.001); // from millimetres to metres
    set.From(document);
    for (CrossSection const& section : set.Items())
        List(section);
    return set.Items().empty() ? 1 : 0; // `check_before_reading` tells why
}
