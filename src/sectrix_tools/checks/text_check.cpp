#include "sectrix_tools/checks/text_check.h"

#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix_tools/checks/detail/document_places.h"
#include "sectrix_tools/checks/geometry_check.h"

#include <set>
#include <string>

namespace qel::SectrixTools {

namespace {

/// The item at the place, or null.
template <class Item>
Item const* Find(std::vector<Item> const& items, int place) {
    return place >= 0 && static_cast<std::size_t>(place) < items.size() ? &items[static_cast<std::size_t>(place)]
                                                                        : nullptr;
}

template <class Place>
void SetPlace(Place const& place, std::string pointer, Finding& finding) {
    finding.m_pointer = std::move(pointer);
    finding.m_line = place.m_line;
    finding.m_column = place.m_column;
}

/// Gives a finding on geometry the place in the text that is nearest to it.
void Locate(DocumentPlaces const& places, Finding& finding) {
    auto const* section = Find(places, finding.m_section);
    if (!section)
        return;
    SetPlace(*section, section->m_pointer, finding);
    auto const* loop = Find(section->m_loops, finding.m_loop);
    if (!loop)
        return;
    SetPlace(*loop, loop->m_pointer, finding);
    if (auto const* vertex = Find(loop->m_vertices, finding.m_vertex))
        SetPlace(*vertex, loop->m_pointer + "/" + std::to_string(vertex->m_element), finding);
}

} // namespace

Findings CheckText(std::string_view text, double scale) {
    DocumentPlaces places;
    auto findings = CheckDocument(text, places);
    std::set<std::string> pointers;
    for (auto const& finding : findings)
        pointers.insert(finding.m_pointer);
    Dom document;
    DomReaderJson::FromString(document, std::string(text).c_str(), nullptr);
    Sectrix::CrossSections set(scale);
    set.From(document);
    for (auto& finding : CheckGeometry(set)) {
        if (finding.m_code == "loop-too-short") // the document has too few positions, which is told
            continue;
        Locate(places, finding);
        if (finding.m_severity == Severity::Error || pointers.count(finding.m_pointer) == 0)
            findings.push_back(std::move(finding));
    }
    return findings;
}

} // namespace qel::SectrixTools
