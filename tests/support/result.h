#pragma once

#include "sectrix/foundation/position.h"
#include "sectrix/sections/cross_sections.h"

#include <cmath>
#include <cstdio>
#include <string>

/// \file
/// Answers as text. All not-a-numbers are alike, since compilers may give them either sign.

namespace fuzz {

inline std::string Number(double value) {
    if (std::isnan(value))
        return " nan";
    char text[40];
    std::snprintf(text, sizeof text, " %a", value);
    return text;
}

inline std::string Text(qel::BBox<2, double> const& box) {
    return Number(box.m_min[0]) + Number(box.m_min[1]) + Number(box.m_max[0]) + Number(box.m_max[1]) + '\n';
}

inline std::string Text(qel::Sectrix::Position const& position) {
    return Number(position.X()) + Number(position.Y()) + Number(position.Z()) +
           (position.IsValid() ? "\n" : " !\n");
}

inline std::string Text(std::vector<qel::Sectrix::Vertex> const& vertices) {
    std::string text;
    for (auto const& vertex : vertices)
        text += std::to_string(vertex.Index()) + (vertex.Exterior() ? " " : "' ");
    return text + '\n';
}

inline std::string Text(std::vector<qel::Sectrix::Loop> const& loops) {
    std::string text;
    for (auto const& loop : loops)
        text += "loop " + Text(loop.Vertices());
    return text;
}

inline std::string Text(qel::Sectrix::CSPositions const& pool) {
    std::string text;
    bool found = false;
    for (int i = 0; i < pool.Count(); ++i) {
        auto const& position = pool.GetPosition(static_cast<std::uint64_t>(i), found);
        text += Number(position.Position()[0]) + Number(position.Position()[1]) + ' ' + position.Name() + '\n';
    }
    return text + std::to_string(pool.NamedCount()) + " names\n";
}

/// All but what is derived.
inline std::string Text(qel::Sectrix::CrossSections const& set) {
    auto text = Text(set.Positions());
    for (auto const& section : set.Items())
        text += "section " + section.AssemblyPartName() + '\n' + Text(section.ExteriorLoop().Vertices()) +
                Text(section.InteriorLoops());
    for (auto const& [name, value] : set.Parameters())
        text += name + Number(value) + '\n';
    return text;
}

/// What cutting gives, and the positions that it adds; cuts where that has not been done.
inline std::string CutText(qel::Sectrix::CrossSections const& set) {
    std::string text;
    for (auto const& section : set.Items()) {
        text += "cut\n" + Text(section.ConvexLoops());
        for (int index : section.AddedVertices())
            text += std::to_string(index) + ' ';
    }
    return text + '\n' + Text(set.Positions());
}

} // namespace fuzz
