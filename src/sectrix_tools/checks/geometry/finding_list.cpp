#include "sectrix_tools/checks/geometry/finding_list.h"

#include <algorithm>
#include <charconv>
#include <tuple>
#include <utility>

namespace qel::SectrixTools::Geometry {

std::string NumberText(double value) {
    char text[32];
    auto const end = std::to_chars(text, text + sizeof text, value, std::chars_format::general, 6).ptr;
    return {text, end};
}

std::string PointText(Point const& point) {
    return "(" + NumberText(point.x) + ", " + NumberText(point.y) + ")";
}

void FindingList::Add(Severity severity, char const* code, std::string message, SectionPlace const& place) {
    m_hasErrors = m_hasErrors || severity == Severity::Error;
    if (++m_counts[code] > kMostListed)
        return;
    Finding finding;
    finding.m_severity = severity;
    finding.m_code = code;
    finding.m_message = std::move(message);
    finding.m_section = m_section;
    finding.m_loop = place.m_loop;
    finding.m_vertex = place.m_vertex;
    m_findings.push_back(std::move(finding));
}

void FindingList::Add(Severity severity, char const* code, std::string message, SectionPlace const& place,
                      Point const& point) {
    auto const size = m_findings.size();
    Add(severity, code, std::move(message), place);
    if (m_findings.size() > size)
        m_findings.back().m_point = Vec<2, double>{point.x, point.y};
}

Findings FindingList::Take() {
    std::stable_sort(m_findings.begin(), m_findings.end(), [](Finding const& one, Finding const& other) {
        return std::tie(one.m_loop, one.m_vertex) < std::tie(other.m_loop, other.m_vertex);
    });
    for (auto const& [code, count] : std::exchange(m_counts, {}))
        if (count > kMostListed)
            Add(Severity::Warning, "not-listed",
                std::to_string(count - kMostListed) + " more findings with the code " + code + " are not listed",
                {});
    m_counts.clear();
    return std::exchange(m_findings, {});
}

} // namespace qel::SectrixTools::Geometry
