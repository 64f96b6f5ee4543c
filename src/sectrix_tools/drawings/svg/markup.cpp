#include "sectrix_tools/drawings/svg/markup.h"

#include <charconv>
#include <cstdint>

namespace qel::SectrixTools::Pictures {

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

/// The number as the system's printing gives it in the C locale; long enough for any double with two decimals.
template <class... Form>
std::string Print(double value, Form... form) {
    char text[400];
    // A zero without its sign.
    auto const [end, error] = std::to_chars(text, text + sizeof text, value == 0 ? 0.0 : value, form...);
    return {text, end};
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
    return Print(value, std::chars_format::general, digits);
}

std::string Pixels(double value) {
    return Print(value, std::chars_format::fixed, 2);
}

} // namespace qel::SectrixTools::Pictures
