#include "report.h"

#include "excerpt.h"
#include "printable.h"
#include "streams.h"

#include "sectrix/interfaces/dom_writer_json.h"

#include <algorithm>

namespace qel::SectrixCommand {
namespace {

using SectrixTools::Finding;
using SectrixTools::Findings;
using SectrixTools::Severity;

/// A place that counts from 0; null for -1, where none is meant.
Dom PlaceNode(int place) {
    return place < 0 ? Dom() : Dom(place);
}

void FillNode(Dom& node, std::string const& file, Finding const& finding) {
    node.toObject();
    node["file"] = ValidUtf8(file);
    node["severity"] = SeverityName(finding.m_severity);
    node["code"] = finding.m_code;
    node["message"] = ValidUtf8(finding.m_message);
    node["pointer"] = ValidUtf8(finding.m_pointer);
    node["line"] = finding.m_line;
    node["column"] = finding.m_column;
    node["section"] = PlaceNode(finding.m_section);
    node["loop"] = PlaceNode(finding.m_loop);
    node["vertex"] = PlaceNode(finding.m_vertex);
    Dom& point = node["point"];
    if (!finding.m_point)
        return;
    point.append() = (*finding.m_point)[0];
    point.append() = (*finding.m_point)[1];
}

/// How many of each kind are left out.
std::string Remainder(std::string const& file, Findings::const_iterator from, Findings::const_iterator end) {
    auto const errors =
        std::count_if(from, end, [](Finding const& finding) { return finding.m_severity == Severity::Error; });
    return file + ": " + std::to_string(end - from) +
           " more are not shown, errors among them: " + std::to_string(errors) + "; --limit 0 shows all";
}

} // namespace

std::string FindingLine(std::string const& file, Finding const& finding) {
    std::string line = Printable(file) + ':';
    if (finding.m_line > 0)
        line += std::to_string(finding.m_line) + ':' + std::to_string(finding.m_column) + ':';
    return line + ' ' + SeverityName(finding.m_severity) + ": " + Printable(finding.m_message) + " [" +
           finding.m_code + ']';
}

void Report::Add(std::string const& file, std::string_view text, Findings const& findings) {
    auto const count = m_style.m_limit == 0 ? findings.size() : std::min(m_style.m_limit, findings.size());
    auto const end = findings.begin() + static_cast<std::ptrdiff_t>(count);
    std::string lines;
    TextLines textLines(text);
    for (auto finding = findings.begin(); finding != end; ++finding) {
        if (m_style.m_isJson) {
            FillNode(m_array.append(), file, *finding);
            continue;
        }
        lines += FindingLine(file, *finding) + '\n';
        if (m_style.m_hasContext && finding->m_line > 0)
            lines += Excerpt(textLines.At(finding->m_line), finding->m_line, finding->m_column);
    }
    if (end != findings.end()) {
        std::string const remainder = Remainder(file, end, findings.end());
        if (m_style.m_isJson)
            Trouble(remainder);
        else
            lines += Printable(remainder) + '\n';
    }
    Print(lines);
}

void Report::End() const {
    if (m_style.m_isJson)
        Print(DomWriterJson::ToString(m_array) + '\n');
}

} // namespace qel::SectrixCommand
