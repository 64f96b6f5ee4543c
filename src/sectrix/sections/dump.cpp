#include "sectrix/sections/cross_sections.h"

#include <fstream>

namespace qel::Sectrix {

void CrossSections::Dump(std::ofstream& stream, char const* prefix) const {
    if (!stream.is_open())
        return;
    // Before anything is written, since it may append to the positions that are listed first.
    for (auto const& section : m_items)
        section.ConvexLoops();

    stream << prefix << "CrossSections:\n";
    stream << prefix << "    Positions:\n";
    for (int index = 0; index < m_positions.Count(); ++index) {
        auto const& point = m_positions.Find(index)->Position();
        stream << prefix << "        " << index << ": (" << point[0] << ", " << point[1] << ")\n";
    }
    auto const sectionPrefix = std::string(prefix) + "    ";
    for (auto const& section : m_items)
        section.Dump(stream, sectionPrefix.c_str());
}

void CrossSection::Dump(std::ofstream& stream, char const* prefix) const {
    auto const exteriorPrefix = std::string(prefix) + "        ";
    auto const loopPrefix = exteriorPrefix + prefix + "    "; // `prefix` stands in it twice
    auto const dumpLoops = [&](std::vector<Loop> const& loops) {
        for (auto const& loop : loops) {
            stream << prefix << "        Loop:\n";
            loop.Dump(stream, loopPrefix.c_str());
        }
    };
    stream << prefix << "Cross Section:\n";
    stream << prefix << "    Exterior Loop:\n";
    m_exteriorLoop.Dump(stream, exteriorPrefix.c_str());
    stream << prefix << "    Interior Loops:\n";
    dumpLoops(m_interiorLoops);
    stream << prefix << "    Convex Loops:\n";
    dumpLoops(ConvexLoops());
}

void Loop::Dump(std::ofstream& stream, char const* prefix) const {
    for (auto const& vertex : m_vertices)
        stream << prefix << vertex.Index() << "\n";
}

} // namespace qel::Sectrix
