#include "sectrix_tools/checks/detail/document_walk.h"

#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix_tools/checks/codes.h"
#include "sectrix_tools/checks/detail/json_failure.h"
#include "sectrix_tools/checks/detail/nearest_key.h"

#include <algorithm>
#include <cstring>
#include <numeric>
#include <tuple>

namespace qel::SectrixTools {

namespace {

/// The start of a text, up to whole characters of UTF-8, for a message.
std::string Shortened(std::string_view text) {
    std::size_t const most = 40;
    if (text.size() <= most)
        return std::string(text);
    auto end = most;
    while (end > 0 && (static_cast<unsigned char>(text[end]) & 0xC0) == 0x80)
        --end;
    return std::string(text.substr(0, end)) + "...";
}

/// A key as text of JSON without its quotes.
std::string Escaped(std::string_view key) {
    std::string text;
    for (char const letter : key.substr(0, 100)) {
        auto const byte = static_cast<unsigned char>(letter);
        if (byte < 0x20)
            text += std::string("\\u00") + (byte < 0x10 ? '0' : '1') + "0123456789abcdef"[byte % 16];
        else
            text += letter;
    }
    return Shortened(text);
}

/// UTF-16 begins with its mark, or with a letter of ASCII, half of whose unit is a zero byte.
bool IsUtf16(std::string_view text) {
    auto const begin = text.substr(0, 2);
    return begin == "\xFF\xFE" || begin == "\xFE\xFF" ||
           (begin.size() == 2 && (begin[0] == '\0' || begin[1] == '\0'));
}

} // namespace

DocumentWalk::DocumentWalk(std::string_view text) {
    Parse(text);
}

void DocumentWalk::Parse(std::string_view whole) {
    if (IsUtf16(whole)) {
        Report("text-not-utf-8", "the text is UTF-16, but UTF-8 is read");
        return;
    }
    m_text = whole.substr(0, whole.find('\0'));
    if (m_text.empty()) {
        Report("text-empty", "the text is empty");
        return;
    }
    std::string reason;
    m_isRead = DomReaderJson::FromString(m_root, m_text.c_str(), &reason);
    if (!m_isRead) {
        auto failure = FindJsonFailure(m_text, reason);
        ReportAt(failure.m_place, {}, failure.m_code, std::move(failure.m_message));
    }
    if (m_text.size() < whole.size())
        ReportAt(m_text.size(), {}, "text-after-zero-byte", "the text is read up to this zero byte only");
    if (m_text.compare(0, 3, "\xEF\xBB\xBF") == 0)
        m_at = 3;
    PassSpace();
}

// The text is JSON, so brackets tell where a value ends once strings are passed over, and it ends in a zero byte.

void DocumentWalk::PassSpace() {
    while (m_text[m_at] == ' ' || m_text[m_at] == '\n' || m_text[m_at] == '\r' || m_text[m_at] == '\t')
        ++m_at;
}

void DocumentWalk::PassString() {
    for (++m_at; m_text[m_at] != '"'; ++m_at)
        m_at += m_text[m_at] == '\\';
    ++m_at;
}

std::size_t DocumentWalk::EndOfWord() const {
    auto end = m_at;
    while (m_text[end] > ' ' && m_text[end] != ',' && m_text[end] != ']' && m_text[end] != '}')
        ++end;
    return end;
}

void DocumentWalk::PassValue() {
    std::size_t depth = 0;
    do {
        auto const letter = m_text[m_at];
        if (letter == '"') {
            PassString();
        } else if (depth == 0 && letter != '[' && letter != '{') {
            m_at = EndOfWord();
        } else { // a bracket, or what parts and makes up the values between brackets
            depth += letter == '[' || letter == '{';
            depth -= letter == ']' || letter == '}';
            ++m_at;
        }
    } while (depth > 0);
}

void DocumentWalk::PassKey() {
    PassSpace();
    m_keyAt = m_at;
    PassString();
    PassSpace();
    ++m_at; // the colon
}

std::string DocumentWalk::Pointer() const {
    std::string pointer;
    for (auto const& step : m_path)
        pointer = Extended(std::move(pointer), step);
    return pointer;
}

std::string DocumentWalk::Extended(std::string pointer, Step const& step) {
    pointer += '/';
    if (!step.m_key)
        return pointer += std::to_string(step.m_place);
    for (char const letter : *step.m_key)
        if (letter == '~')
            pointer += "~0";
        else if (letter == '/')
            pointer += "~1";
        else
            pointer += letter;
    return pointer;
}

std::string DocumentWalk::Words(Dom const& node) const {
    if (node.isArray())
        return node.size() == 0 ? "an empty list" : "a list";
    if (node.isObject())
        return node.objects().empty() ? "an empty object" : "an object";
    auto end = EndOfWord();
    if (IsString()) {
        for (end = m_at + 1; m_text[end] != '"'; ++end)
            end += m_text[end] == '\\';
        ++end;
    }
    return Shortened(std::string_view(m_text).substr(m_at, end - m_at));
}

bool DocumentWalk::CheckList(Dom const& node, char const* what) {
    if (!node.isArray())
        Report("no-list", Words(node) + " stands where a list of " + what + " is expected; it is not read");
    return node.isArray();
}

void DocumentWalk::CheckNumber(Dom const& node, char const* what) {
    if (!IsNumber())
        Report("no-number", std::string(what) + ' ' + Words(node) + " is no number; it is read as 0");
}

bool DocumentWalk::CheckText(Dom const& node, char const* what) {
    if (!IsString())
        Report("no-text", std::string(what) + ' ' + Words(node) + " is no text; it is read as an empty one");
    return IsString();
}

void DocumentWalk::CheckBoolean(Dom const& node, char const* what, char const* readAs) {
    if (!node.isBool())
        Report("no-boolean",
               std::string(what) + ' ' + Words(node) + " is neither true nor false; it is read as " + readAs);
}

bool DocumentWalk::CheckObject(Dom const& node) {
    if (!node.isObject())
        Report("no-object", Words(node) + " stands where the document must be an object");
    return node.isObject();
}

Finding& DocumentWalk::Report(char const* code, std::string message) {
    return ReportAt(m_at, Pointer(), code, std::move(message));
}

Finding& DocumentWalk::ReportKey(char const* code, std::string message) {
    return ReportAt(m_keyAt, Pointer(), code, std::move(message));
}

Finding& DocumentWalk::ReportAt(std::size_t place, std::string pointer, char const* code, std::string message) {
    m_places.push_back(place);
    auto& finding = m_findings.emplace_back();
    finding.m_severity = FindCode(code)->m_severity;
    finding.m_code = code;
    finding.m_message = std::move(message);
    finding.m_pointer = std::move(pointer);
    return finding;
}

void DocumentWalk::ReportRepeatedKey() {
    ReportKey("key-repeated", "the key \"" + Escaped(*m_path.back().m_key) +
                                  "\" stands here more than once; only the last is read");
}

void DocumentWalk::ReportUnknownKey(std::vector<char const*> const& known) {
    auto const& key = *m_path.back().m_key;
    auto message = "nobody reads the key \"" + Escaped(key) + "\" here";
    if (auto const* const nearest = NearestKey(key, known)) {
        message += std::string("; \"") + nearest + "\" may be meant";
    } else {
        message += "; those that are read are";
        for (auto const* const each : known)
            message += std::string(each == known.front() ? " \"" : ", \"") + each + '"';
    }
    ReportKey("unknown-key", std::move(message));
}

Findings DocumentWalk::TakeFindings() {
    std::vector<std::size_t> order(m_findings.size());
    std::iota(order.begin(), order.end(), std::size_t{0});
    std::stable_sort(order.begin(), order.end(),
                     [this](std::size_t first, std::size_t second) { return m_places[first] < m_places[second]; });
    Findings sorted;
    sorted.reserve(order.size());
    for (auto const which : order) {
        auto& finding = sorted.emplace_back(std::move(m_findings[which]));
        std::tie(finding.m_line, finding.m_column) = LineAndColumn(m_places[which]);
    }
    return sorted;
}

std::pair<int, int> DocumentWalk::LineAndColumn(std::size_t place) {
    if (place < m_lineStart) {
        m_lineStart = m_searched = 0;
        m_line = 1;
    }
    auto const* const text = m_text.data();
    while (m_searched < place) {
        auto const* const end = static_cast<char const*>(std::memchr(text + m_searched, '\n', place - m_searched));
        m_searched = end ? static_cast<std::size_t>(end - text) + 1 : place;
        if (end) {
            m_lineStart = m_searched;
            ++m_line;
        }
    }
    return {m_line, static_cast<int>(place - m_lineStart) + 1};
}

} // namespace qel::SectrixTools
