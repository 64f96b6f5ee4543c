#include "sectrix_tools/checks/detail/sections_check.h"

#include "sectrix/foundation/json_tag.h"

#include <algorithm>
#include <cmath>
#include <tuple>

namespace qel::SectrixTools {

using Sectrix::JsonTag;

namespace {

std::string Counted(std::size_t count, char const* what) {
    return std::to_string(count) + ' ' + what + (count == 1 ? "" : "s");
}

/// What reading makes of an index: an integer's low 32 bits.
int IndexOf(Dom const& node) {
    return static_cast<int>(static_cast<std::uint32_t>(node.asInt(0)));
}

} // namespace

void SectionsCheck::Check(Dom const& sections) {
    if (!m_walk.CheckList(sections, "sections"))
        return;
    if (sections.size() == 0)
        m_walk.Report("no-sections", "there are no sections");
    m_walk.Elements(sections, [&](std::uint64_t, Dom const& section) {
        auto const firstFinding = m_walk.Reported().size();
        CheckSection(section);
        EndSection(firstFinding);
    });
    if (sections.size() > 0 && !m_isLoopUnread)
        m_positions.ReportUnused();
}

void SectionsCheck::CheckWholePool() {
    if (m_pool.size() < 3)
        m_walk.ReportAt(m_positions.Place(), m_positions.Pointer(), "too-few-positions",
                        "there is no list of sections, and " + Counted(m_pool.size(), "position") +
                            " make no section");
    if (!m_places)
        return;
    m_section = {m_positions.Pointer(), 0, 0, {}};
    std::tie(m_section.m_line, m_section.m_column) = m_walk.LineAndColumn(m_positions.Place());
    for (auto const& position : m_pool)
        m_vertices.push_back({0, position.m_step, position.m_element, position.m_place});
    AddLoopPlaces({m_section.m_pointer, m_section.m_line, m_section.m_column, {}}, true);
    m_places->push_back(std::move(m_section));
}

void SectionsCheck::CheckSection(Dom const& section) {
    m_isDropped = false;
    m_exteriorCount = m_interiorCount = 0;
    if (m_places) {
        m_section = {m_walk.Pointer(), 0, 0, {}};
        std::tie(m_section.m_line, m_section.m_column) = m_walk.LineAndColumn(m_walk.Place());
    }
    if (section.isArray()) {
        CheckLoops(section);
        return;
    }
    if (!section.isObject()) {
        DropUnread("no-section", m_walk.Words(section) + " is no section; it is dropped");
        return;
    }
    if (!section.has(JsonTag::kCSLoopsTag))
        DropUnread("no-loops", "there are no \"loops\"; the section is dropped");
    std::array const keys{JsonTag::kCSAssemblyPartNameTag, JsonTag::kCSLoopsTag};
    m_walk.Members(section, keys, [&](std::size_t which, Dom const& value) {
        if (which == 1)
            CheckLoops(value);
        else
            m_walk.CheckText(value, "the name");
    });
}

void SectionsCheck::EndSection(std::size_t firstFinding) {
    auto& findings = m_walk.Reported();
    for (auto i = firstFinding; i < findings.size(); ++i) {
        findings[i].m_section = m_isDropped ? -1 : m_sectionCount;
        if (m_isDropped)
            findings[i].m_loop = findings[i].m_vertex = -1;
    }
    if (m_isDropped)
        return;
    ++m_sectionCount;
    if (m_places)
        m_places->push_back(std::move(m_section));
}

void SectionsCheck::CheckLoops(Dom const& loops) {
    if (!loops.isArray() || loops.size() == 0) {
        DropUnread("no-loops",
                   m_walk.Words(loops) + " stands where the list of loops is expected; the section is dropped");
        return;
    }
    bool hasExterior = false;
    for (std::uint64_t i = 0; i < loops.size(); ++i)
        hasExterior = hasExterior || (loops[i].size() >= 2 && loops[i][1].asBool(false));
    if (!hasExterior)
        Drop("no-exterior", "no loop has the flag true of the exterior loop; the section is dropped");
    m_walk.Elements(loops, [&](std::uint64_t, Dom const& pair) { CheckPair(pair); });
}

void SectionsCheck::CheckPair(Dom const& pair) {
    if (pair.size() < 2) {
        m_isLoopUnread = true;
        m_walk.Report("no-loop",
                      m_walk.Words(pair) + " is no pair of a list of indices and a flag; it is left out");
        return;
    }
    bool const exterior = pair[1].asBool(false);
    int const loop = exterior ? 0 : ++m_interiorCount;
    auto const firstFinding = m_walk.Reported().size();
    if (exterior && ++m_exteriorCount > 1)
        Drop("exterior-repeated", "another loop of this section is the exterior one too; the section is dropped");
    m_walk.Elements(pair, [&](std::uint64_t place, Dom const& element) {
        if (place == 0)
            CheckLoop(element, exterior);
        else if (place == 1)
            m_walk.CheckBoolean(element, "the flag", "false, an interior loop");
        else if (place == 2)
            m_walk.Report("element-not-read", "only the first two elements are read: the indices and the flag");
    });
    auto& findings = m_walk.Reported();
    for (auto i = firstFinding; i < findings.size(); ++i)
        findings[i].m_loop = loop;
}

void SectionsCheck::CheckLoop(Dom const& list, bool exterior) {
    if (!list.isArray()) {
        DropUnread("loop-too-short",
                   m_walk.Words(list) +
                       " is no list of indices, so the loop has no vertices; the section is dropped");
        return;
    }
    ++m_loopCount;
    m_vertices.clear();
    auto const place = m_walk.Place();
    m_walk.Elements(list, [&](std::uint64_t element, Dom const& node) { CheckIndex(node, element); });
    // An interior loop is turned round before what closes it is taken off its end.
    if (!m_vertices.empty() && m_vertices.front().m_index == m_vertices.back().m_index)
        m_vertices.erase(exterior ? m_vertices.end() - 1 : m_vertices.begin());
    auto const pointer = m_walk.Pointer();
    if (m_vertices.size() < 3) {
        m_isDropped = true;
        m_walk.ReportAt(place, pointer, "loop-too-short",
                        "the loop has " + Counted(m_vertices.size(), "corner") +
                            ", but needs three; the section is dropped");
    }
    CheckRepeats(pointer, exterior);
    if (m_places) {
        LoopPlaces places{pointer, 0, 0, {}};
        std::tie(places.m_line, places.m_column) = m_walk.LineAndColumn(place);
        AddLoopPlaces(std::move(places), exterior);
    }
}

void SectionsCheck::CheckIndex(Dom const& node, std::uint64_t element) {
    int const index = IndexOf(node);
    bool const isKept = index >= 0 && static_cast<std::size_t>(index) < m_pool.size();
    bool const isAsWritten = m_walk.IsNumber() && node.asDouble(0.0) == index;
    if (!isKept || !isAsWritten)
        ReportIndex(node, index);
    if (isKept)
        m_vertices.push_back({index, m_walk.LastStep(), static_cast<int>(element), m_walk.Place(),
                              isAsWritten ? -1 : static_cast<std::ptrdiff_t>(m_walk.Reported().size()) - 1});
}

void SectionsCheck::ReportIndex(Dom const& node, int index) {
    bool const isNumber = m_walk.IsNumber();
    bool const isWhole = isNumber && node.asDouble(0.0) == std::trunc(node.asDouble(0.0));
    auto const readAs = "read as " + std::to_string(index);
    auto const message = "the index " + m_walk.Words(node);
    auto const outside = message + (isNumber && node.asDouble(0.0) == index ? "" : ", " + readAs + ',');
    if (index < 0)
        m_walk.Report("index-negative", outside + " is negative; it is left out");
    else if (static_cast<std::size_t>(index) >= m_pool.size())
        m_walk.Report("index-out-of-range",
                      outside + " is out of range: there are " + Counted(m_pool.size(), "position"));
    else if (!isNumber)
        m_walk.Report("index-no-number", message + " is no number; it is " + readAs +
                                             (m_walk.IsString() ? ", since names are not looked up" : ""));
    else if (!isWhole)
        m_walk.Report("index-fraction", message + " is no whole number; it is " + readAs);
    else
        m_walk.Report("index-wraps", message + " has more than 32 bits; it is " + readAs);
}

void SectionsCheck::CheckRepeats(std::string const& list, bool exterior) {
    auto const count = m_vertices.size();
    auto const report = [&](std::size_t place, char const* code, char const* where) {
        auto const& vertex = m_vertices[place];
        m_walk
            .ReportAt(vertex.m_place, DocumentWalk::Extended(list, vertex.m_step), code,
                      "the index " + std::to_string(vertex.m_index) + " stands twice " + where)
            .m_vertex = static_cast<int>(exterior ? place : count - 1 - place);
    };
    for (std::size_t i = 0; i < count; ++i) {
        auto const& vertex = m_vertices[i];
        auto& lastLoop = m_pool[static_cast<std::size_t>(vertex.m_index)].m_lastLoop;
        if (vertex.m_finding >= 0)
            m_walk.Reported()[static_cast<std::size_t>(vertex.m_finding)].m_vertex =
                static_cast<int>(exterior ? i : count - 1 - i);
        if (count >= 3) { // a shorter loop has been reported already
            bool const isBehindEqual = i > 0 && m_vertices[i - 1].m_index == vertex.m_index;
            bool const isBeforeEqual = i + 1 == count && m_vertices[0].m_index == vertex.m_index; // round the end
            if (isBehindEqual || isBeforeEqual)
                report(i, "index-twice-in-a-row", "in a row");
            else if (lastLoop == m_loopCount)
                report(i, "index-twice-in-loop", "in this loop");
        }
        lastLoop = m_loopCount;
    }
}

void SectionsCheck::AddLoopPlaces(LoopPlaces places, bool exterior) {
    for (auto const& vertex : m_vertices) {
        auto const [line, column] = m_walk.LineAndColumn(vertex.m_place);
        places.m_vertices.push_back({vertex.m_element, line, column});
    }
    auto& loops = m_section.m_loops;
    if (!exterior)
        std::reverse(places.m_vertices.begin(), places.m_vertices.end());
    loops.insert(exterior ? loops.begin() : loops.end(), std::move(places));
}

void SectionsCheck::DropUnread(char const* code, std::string message) {
    m_isLoopUnread = true;
    Drop(code, std::move(message));
}

void SectionsCheck::Drop(char const* code, std::string message) {
    m_isDropped = true;
    m_walk.Report(code, std::move(message));
}

} // namespace qel::SectrixTools
