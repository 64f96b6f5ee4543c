#include "sectrix/interfaces/dom_writer_json.h"

#include <algorithm>
#include <charconv>
#include <cmath>

namespace qel {

namespace {

void AppendString(std::string& text, std::string const& value) {
    char const* const digits = "0123456789abcdef";
    text += '"';
    for (char const c : value) {
        auto const byte = static_cast<unsigned char>(c);
        if (byte < 0x20) {
            text += "\\u00";
            text += digits[byte >> 4];
            text += digits[byte & 0xF];
        } else {
            if (c == '"' || c == '\\')
                text += '\\';
            text += c;
        }
    }
    text += '"';
}

template <class Number>
void AppendNumber(std::string& text, Number value) {
    char digits[32]; // the longest, -2.2250738585072014e-308, takes 24
    auto const written = std::to_chars(digits, digits + sizeof digits, value);
    text.append(digits, written.ptr);
}

void AppendDouble(std::string& text, double value) {
    if (!std::isfinite(value)) {
        text += "null";
        return;
    }
    auto const start = text.size();
    AppendNumber(text, value);
    if (text.find_first_of(".e", start) == std::string::npos)
        text += ".0";
}

void AppendLeaf(std::string& text, Dom const& node) {
    if (node.isArray())
        text += "[]";
    else if (node.isObject())
        text += "{}";
    else if (node.isBool())
        text += node.asBool(false) ? "true" : "false";
    else if (node.isInt())
        AppendNumber(text, node.asInt(0));
    else if (node.isDouble())
        AppendDouble(text, node.asDouble(0.0));
    else if (node.isString())
        AppendString(text, node.asString({}));
    else
        text += "null";
}

/// The element, or the value of the member, at this place; null past the last.
Dom const* Child(Dom const& node, std::uint64_t place) {
    auto const& members = node.objects();
    if (place < members.size())
        return &members[place].second;
    return place < node.size() ? &node[place] : nullptr;
}

bool HasDeepChild(Dom const& node) {
    for (std::uint64_t i = 0; auto const* child = Child(node, i); ++i)
        if (Child(*child, 0))
            return true;
    return false;
}

void AppendLineBreak(std::string& text, bool afterSibling, std::size_t depth) {
    // Deeper lines are indented no further: the text would grow with the square of the depth.
    std::size_t const deepest = 32;
    text += afterSibling ? ",\n" : "\n";
    text.append(2 * std::min(depth, deepest), ' ');
}

/// A container that has been opened in the text, and how far its children have been written.
struct OpenContainer {
    Dom const* m_node;
    bool m_onOneLine;
    std::uint64_t m_next = 0;
};

} // namespace

std::string DomWriterJson::ToString(Dom const& dom) {
    std::string text;
    // From the root to the container being written. No recursion, whatever the depth.
    std::vector<OpenContainer> open;
    auto const begin = [&](Dom const& node) {
        if (!Child(node, 0)) {
            AppendLeaf(text, node);
        } else {
            text += node.isArray() ? '[' : '{';
            open.push_back({&node, !HasDeepChild(node)});
        }
    };
    begin(dom);
    while (!open.empty()) {
        auto& [node, onOneLine, next] = open.back();
        auto const* child = Child(*node, next);
        bool const done = !child;
        if (!onOneLine)
            AppendLineBreak(text, next > 0 && !done, open.size() - done);
        else if (next > 0 && !done)
            text += ", ";
        if (done) {
            text += node->isArray() ? ']' : '}';
            open.pop_back();
            continue;
        }
        if (node->isObject()) {
            AppendString(text, node->objects()[next].first);
            text += ": ";
        }
        ++next; // before the list of what is open grows
        begin(*child);
    }
    return text;
}

} // namespace qel
