#include "document_kind.h"

namespace qel::SectrixCommand {
namespace {

/// True where a key stands in the text, with its colon behind it.
bool HasKey(std::string const& text, std::string const& key) {
    std::string const quoted = '"' + key + '"';
    for (auto found = text.find(quoted); found != std::string::npos; found = text.find(quoted, found + 1)) {
        auto const next = text.find_first_not_of(" \t\r\n", found + quoted.size());
        if (next != std::string::npos && text[next] == ':')
            return true;
    }
    return false;
}

} // namespace

bool IsExtrusion(std::string const& text) {
    auto const has = [&](char const* key) { return HasKey(text, key); };
    return !has("Outlines") && !has("outlines") &&
           (has("Sections") || has("Profiles") || has("Points") || has("Origin") || has("Normal"));
}

} // namespace qel::SectrixCommand
