#pragma once

#include "sectrix/sections/cross_section.h"
#include "support/plain_cutting.h"
#include "support/result.h"

/// \file
/// The plain cutting of a section, and its answer in the text form of the library's.

namespace plain {

/// A section with the positions of its pool, uncut.
inline Cutter CutterOf(qel::Sectrix::CrossSection const& section) {
    Cutter cutter;
    bool found = false;
    for (int i = 0; i < section.Positions().Count(); ++i) {
        auto const& point = section.Positions().GetPosition(static_cast<std::uint64_t>(i), found).Position();
        cutter.pool.push_back({point[0], point[1]});
    }
    auto const add = [&cutter](qel::Sectrix::Loop const& loop) {
        auto& ring = cutter.loops.emplace_back();
        for (auto const& vertex : loop.Vertices())
            ring.push_back({vertex.Index(), vertex.Exterior()});
    };
    add(section.ExteriorLoop());
    for (auto const& hole : section.InteriorLoops())
        add(hole);
    return cutter;
}

/// What `fuzz::CutText` gives for a set without names of this one section.
inline std::string CutText(Cutter const& cutter) {
    std::string text = "cut\n";
    for (auto const& ring : cutter.loops) {
        std::vector<qel::Sectrix::Vertex> vertices;
        for (auto const& corner : ring)
            vertices.emplace_back(corner.index, corner.exterior);
        text += "loop " + fuzz::Text(vertices);
    }
    for (int index : cutter.added)
        text += std::to_string(index) + ' ';
    text += '\n';
    for (auto const& point : cutter.pool)
        text += fuzz::Number(point.x) + fuzz::Number(point.y) + " \n";
    return text + "0 names\n";
}

} // namespace plain
