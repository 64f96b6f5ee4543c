#include "common/markup.h"

#include <algorithm>
#include <cerrno>
#include <cstdint>
#include <cstdio>
#include <cstring>
#include <fstream>
#include <iterator>
#include <stdexcept>

namespace example {
namespace {

bool IsContinuation(char byte) {
    return (static_cast<unsigned char>(byte) & 0xC0) == 0x80;
}

bool IsXmlCharacter(std::uint32_t code) {
    return code == 0x9 || code == 0xA || code == 0xD || (code >= 0x20 && code <= 0xD7FF) ||
           (code >= 0xE000 && code <= 0xFFFD) || (code >= 0x10000 && code <= 0x10FFFF);
}

/// The number of bytes of the character at `at`; 0 when it is not well-formed or XML forbids it.
std::size_t CharacterLength(std::string const& text, std::size_t at) {
    auto const lead = static_cast<unsigned char>(text[at]);
    std::size_t const length = lead < 0x80 ? 1 : lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : 4;
    if (length == 0 || at + length > text.size())
        return 0;
    std::uint32_t code = length == 1 ? lead : lead & (0x7Fu >> length);
    for (std::size_t next = at + 1; next < at + length; ++next) {
        if (!IsContinuation(text[next]))
            return 0;
        code = code << 6 | (static_cast<unsigned char>(text[next]) & 0x3Fu);
    }
    bool const overlong = (length == 3 && code < 0x800) || (length == 4 && code < 0x10000);
    return !overlong && IsXmlCharacter(code) ? length : 0;
}

std::runtime_error FileError(char const* what, std::filesystem::path const& path) {
    return std::runtime_error(path.string() + ": " + what + ": " + std::strerror(errno));
}

} // namespace

std::string Escape(std::string const& text) {
    std::string escaped;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const length = CharacterLength(text, at);
        switch (length == 0 ? '\0' : text[at]) {
        case '\0':
            escaped += "\xEF\xBF\xBD";
            break;
        case '&':
            escaped += "&amp;";
            break;
        case '<':
            escaped += "&lt;";
            break;
        case '>':
            escaped += "&gt;";
            break;
        case '"':
            escaped += "&quot;";
            break;
        case '\'':
            escaped += "&#39;";
            break;
        default:
            escaped.append(text, at, length);
        }
        at += length == 0 ? 1 : length;
    }
    return escaped;
}

std::size_t Length(std::string const& text) {
    std::size_t length = 0;
    for (char const byte : text)
        length += IsContinuation(byte) ? 0 : 1;
    return length;
}

std::string Number(double value, int digits) {
    char text[40];
    std::snprintf(text, sizeof text, "%.*g", digits, value == 0 ? 0.0 : value); // no "-0"
    return text;
}

std::string FileStem(std::string const& text) {
    std::string stem;
    for (char const byte : text) {
        bool const upper = byte >= 'A' && byte <= 'Z';
        if (upper || (byte >= 'a' && byte <= 'z') || (byte >= '0' && byte <= '9'))
            stem += static_cast<char>(upper ? byte - 'A' + 'a' : byte);
        else if (!stem.empty() && stem.back() != '-')
            stem += '-';
    }
    stem.resize(std::min(stem.size(), std::size_t(60))); // well below what any file system takes
    while (!stem.empty() && stem.back() == '-')
        stem.pop_back();
    return stem.empty() ? "section" : stem;
}

std::string ReadFile(std::filesystem::path const& path) {
    errno = 0;
    std::ifstream stream(path, std::ios::binary);
    if (!stream)
        throw FileError("cannot be opened", path);
    if (std::filesystem::is_directory(path)) // which opens well, but raises an error of its own when read
        throw std::runtime_error(path.string() + ": is a directory");
    std::string content(std::istreambuf_iterator<char>(stream), {});
    if (stream.bad())
        throw FileError("cannot be read", path);
    return content;
}

void WriteFile(std::filesystem::path const& path, std::string const& content) {
    errno = 0;
    std::ofstream stream(path, std::ios::binary);
    stream.write(content.data(), static_cast<std::streamsize>(content.size()));
    stream.close();
    if (!stream)
        throw FileError("cannot be written", path);
}

} // namespace example
