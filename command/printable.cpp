#include "printable.h"

#include <cstdint>
#include <cstdio>
#include <cwchar>

namespace qel::SectrixCommand {
namespace {

constexpr char const* kReplacement = "\xEF\xBF\xBD"; // U+FFFD

struct CodePoint {
    std::uint32_t m_value = 0;
    /// The number of bytes in UTF-8; 0 where the text does not begin with UTF-8.
    std::size_t m_length = 0;
};

/// The code point that the text begins with; the text is not empty.
CodePoint FirstCodePoint(std::string_view text) noexcept {
    auto const lead = static_cast<unsigned char>(text[0]);
    if (lead < 0x80)
        return {lead, 1};
    std::size_t const length = lead < 0xC2 ? 0 : lead < 0xE0 ? 2 : lead < 0xF0 ? 3 : lead < 0xF5 ? 4 : 0;
    if (length == 0 || length > text.size())
        return {};
    std::uint32_t value = lead & (0x7Fu >> length);
    for (std::size_t i = 1; i < length; ++i) {
        auto const byte = static_cast<unsigned char>(text[i]);
        if ((byte & 0xC0) != 0x80)
            return {};
        value = value << 6 | (byte & 0x3F);
    }
    bool const isOverlong = (length == 3 && value < 0x800) || (length == 4 && value < 0x10000);
    bool const isSurrogate = value >= 0xD800 && value <= 0xDFFF;
    if (isOverlong || isSurrogate || value > 0x10FFFF)
        return {};
    return {value, length};
}

/// How many columns of a terminal a character takes; negative where that is not known.
int Width(std::uint32_t value) noexcept {
#ifdef _WIN32
    static_cast<void>(value); // Windows has no table of widths
    return 1;
#else
    return ::wcwidth(static_cast<wchar_t>(value));
#endif
}

/// True for the control characters of ASCII and Latin-1, line separators, and marks of writing direction.
bool IsObeyed(std::uint32_t value) noexcept {
    return value < 0x20 || (value >= 0x7F && value < 0xA0) || value == 0x61C || value == 0x200E ||
           value == 0x200F || (value >= 0x2028 && value <= 0x202E) || (value >= 0x2066 && value <= 0x2069);
}

Glyph GlyphOf(CodePoint codePoint, std::string_view bytes, std::size_t at) {
    if (codePoint.m_length == 0)
        return {kReplacement, 1, at};
    if (codePoint.m_value == '\t')
        return {" ", 1, at};
    if (IsObeyed(codePoint.m_value)) {
        char escape[16];
        std::snprintf(escape, sizeof escape, "\\u%04x", static_cast<unsigned>(codePoint.m_value));
        return {escape, 6, at};
    }
    int const width = Width(codePoint.m_value);
    return {std::string(bytes), width < 0 ? 1 : width, at};
}

} // namespace

std::vector<Glyph> Glyphs(std::string_view text) {
    std::vector<Glyph> glyphs;
    for (std::size_t at = 0; at < text.size();) {
        CodePoint const codePoint = FirstCodePoint(text.substr(at));
        std::size_t const length = codePoint.m_length == 0 ? 1 : codePoint.m_length;
        glyphs.push_back(GlyphOf(codePoint, text.substr(at, length), at));
        at += length;
    }
    return glyphs;
}

std::string Printable(std::string_view text) {
    std::string shown;
    for (Glyph const& glyph : Glyphs(text))
        shown += glyph.m_shown;
    return shown;
}

std::string ValidUtf8(std::string_view text) {
    std::string valid;
    for (std::size_t at = 0; at < text.size();) {
        std::size_t const length = FirstCodePoint(text.substr(at)).m_length;
        valid += length == 0 ? std::string_view(kReplacement) : text.substr(at, length);
        at += length == 0 ? 1 : length;
    }
    return valid;
}

} // namespace qel::SectrixCommand
