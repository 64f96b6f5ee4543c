#include "section_report/loaded_document.h"

#include "common/document.h"

#include <algorithm>

namespace example {
namespace {

using qel::Dom;
using qel::Sectrix::CrossSection;
using qel::Sectrix::CrossSections;

/// A repetition of the first index at the end only closes the loop: it is no vertex of its own.
std::uint64_t VertexCount(Dom const& indices) {
    std::uint64_t const count = indices.size();
    bool const closed = count > 1 && indices[0].isInt() && indices[count - 1].isInt() &&
                        indices[0].asInt(0) == indices[count - 1].asInt(0);
    return closed ? count - 1 : count;
}

void CountGiven(Dom const& dom, Tally& positions, Tally& sections, Tally& loops, Tally& vertices) {
    Dom const& outlines = dom.has("Outlines") ? dom["Outlines"] : dom["outlines"];
    positions.m_given = outlines[0].size();
    Dom const& list = outlines[1];
    sections.m_given = list.size();
    for (std::uint64_t section = 0; section < list.size(); ++section) {
        Dom const& element = list[section];
        Dom const& pairs = element.isObject() ? element["loops"] : element;
        loops.m_given += pairs.size();
        for (std::uint64_t loop = 0; loop < pairs.size(); ++loop)
            vertices.m_given += VertexCount(pairs[loop][0]);
    }
}

void CountKept(CrossSections const& set, Tally& positions, Tally& sections, Tally& loops, Tally& vertices) {
    positions.m_kept = static_cast<std::uint64_t>(set.Positions().Count());
    sections.m_kept = set.Items().size();
    for (CrossSection const& section : set.Items()) {
        loops.m_kept += 1 + section.InteriorLoops().size();
        vertices.m_kept += section.ExteriorLoop().Vertices().size();
        for (auto const& hole : section.InteriorLoops())
            vertices.m_kept += hole.Vertices().size();
    }
}

} // namespace

LoadedDocument Load(Request const& request) {
    Dom const dom = ReadDocument(request.m_file);
    LoadedDocument document{request, CrossSections(request.m_scale), {}};
    document.m_set.From(dom);

    Tally positions{"positions"}, sections{"sections"}, loops{"loops"}, vertices{"vertices"},
        parameters{"parameters"};
    CountGiven(dom, positions, sections, loops, vertices);
    CountKept(document.m_set, positions, sections, loops, vertices);
    parameters.m_given = dom["Params"].size() + dom["Params"].objects().size();
    parameters.m_kept = document.m_set.Parameters().size();
    // Without a list of sections the one section is made of the whole pool, and nothing of it stands in the
    // document.
    for (Tally* const tally : {&sections, &loops, &vertices})
        tally->m_given = std::max(tally->m_given, tally->m_kept);
    document.m_tallies = {positions, sections, loops, vertices, parameters};
    return document;
}

std::string TitleOf(CrossSections const& set, std::size_t section) {
    std::string const& name = set.Items()[section].AssemblyPartName();
    return name.empty() ? "section " + std::to_string(section + 1) : name;
}

bool HasDropped(LoadedDocument const& document) {
    return std::any_of(document.m_tallies.begin(), document.m_tallies.end(),
                       [](Tally const& tally) { return tally.m_kept < tally.m_given; });
}

} // namespace example
