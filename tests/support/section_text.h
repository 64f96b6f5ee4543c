#pragma once

#include "sectrix/sections/cross_sections.h"

#include <sstream>
#include <string>
#include <vector>

/// \file
/// Sections in the notation of the case files.

namespace sectrix_tests {

inline std::string LoopText(qel::Sectrix::Loop const& loop) {
    std::string text;
    for (auto const& vertex : loop.Vertices())
        text += (text.empty() ? "" : " ") + std::to_string(vertex.Index()) + (vertex.Exterior() ? "" : "'");
    return text;
}

inline std::string LoopsText(std::vector<qel::Sectrix::Loop> const& loops) {
    std::string text;
    for (auto const& loop : loops)
        text += (&loop == &loops.front() ? "" : " | ") + LoopText(loop);
    return text;
}

inline std::string SectionText(qel::Sectrix::CrossSection const& section) {
    auto const holes = LoopsText(section.InteriorLoops());
    return section.AssemblyPartName() + ": " + LoopText(section.ExteriorLoop()) +
           (section.InteriorLoops().empty() ? "" : " | " + holes);
}

/// All of a set, in one text, numbers to the last bit.
inline std::string SetText(qel::Sectrix::CrossSections const& set) {
    std::ostringstream text;
    text << std::hexfloat;
    bool found = false;
    for (int i = 0; i < set.Positions().Count(); ++i) {
        auto const& position = set.Positions().GetPosition(static_cast<std::uint64_t>(i), found);
        text << position.Position()[0] << ' ' << position.Position()[1] << ' ' << position.Name() << '\n';
    }
    text << set.Positions().NamedCount() << " names\n";
    for (auto const& section : set.Items())
        text << SectionText(section) << '\n';
    for (auto const& [name, value] : set.Parameters())
        text << name << '=' << value << '\n';
    return text.str();
}

} // namespace sectrix_tests
