#pragma once

#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/sections/cross_sections.h"

#include <fstream>
#include <sstream>
#include <string>

/// \file
/// Sections in the notation of the case files, and the reading of these files.

namespace sectrix_tests {

template <class Vertices>
std::string LoopText(Vertices const& vertices) {
    std::string text;
    for (auto const& vertex : vertices)
        text += (text.empty() ? "" : " ") + std::to_string(vertex.Index()) + (vertex.Exterior() ? "" : "'");
    return text;
}

inline std::string LoopsText(std::vector<qel::Sectrix::Loop> const& loops) {
    std::string text;
    for (auto const& loop : loops)
        text += (&loop == &loops.front() ? "" : " | ") + LoopText(loop.Vertices());
    return text;
}

inline std::string SectionText(qel::Sectrix::CrossSection const& section) {
    auto const holes = LoopsText(section.InteriorLoops());
    return section.AssemblyPartName() + ": " + LoopText(section.ExteriorLoop().Vertices()) +
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

inline std::string FileText(std::string const& path) {
    std::ifstream file(std::string(SECTRIX_TEST_DATA) + "/" + path, std::ios::binary);
    return {std::istreambuf_iterator<char>(file), {}};
}

/// A data file that must be there and be JSON; what is neither fails the run.
inline qel::Dom FileDom(std::string const& path) {
    qel::Dom dom;
    std::string error;
    if (!qel::DomReaderJson::FromString(dom, FileText(path).c_str(), &error))
        throw std::runtime_error(path + ": " + error);
    return dom;
}

} // namespace sectrix_tests
