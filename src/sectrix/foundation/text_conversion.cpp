#include "sectrix/foundation/text_conversion.h"

#include <cstdint>
#include <cstring>
#include <cwchar>

namespace qel::Sectrix {

namespace {

/// Writes the form of one unit and returns the place behind it.
char* EncodeUnit(std::uint32_t unit, char* target) {
    if (unit < 0x80) {
        *target++ = static_cast<char>(unit);
    } else if (unit < 0x800) {
        *target++ = static_cast<char>(0xC0 | unit >> 6);
        *target++ = static_cast<char>(0x80 | (unit & 0x3F));
    } else {
        *target++ = static_cast<char>(0xE0 | unit >> 12);
        *target++ = static_cast<char>(0x80 | (unit >> 6 & 0x3F));
        *target++ = static_cast<char>(0x80 | (unit & 0x3F));
    }
    return target;
}

} // namespace

std::string ToUtf8(std::wstring const& text) {
    return ToUtf8(text.c_str());
}

std::string ToUtf8(wchar_t const* text) {
    if (!text)
        return {};
    auto const count = std::wcslen(text);
    std::string bytes(6 * count, '\0'); // two units of three bytes, the most that a wide element needs
    char* end = bytes.data();
    for (std::size_t i = 0; i < count; ++i) {
        auto const element = static_cast<std::uint32_t>(text[i]);
        if (element >= 0x10000 && element <= 0x10FFFF) {
            end = EncodeUnit(0xD800 + ((element - 0x10000) >> 10), end);
            end = EncodeUnit(0xDC00 + (element & 0x3FF), end);
        } else {
            end = EncodeUnit(element & 0xFFFF, end);
        }
    }
    bytes.resize(static_cast<std::size_t>(end - bytes.data()));
    return bytes;
}

std::wstring Utf8ToW(std::string const& text) {
    return Utf8ToW(text.c_str());
}

std::wstring Utf8ToW(char const* text) {
    if (!text)
        return {};
    auto const count = std::strlen(text);
    auto const byte = [text, count](std::size_t place) {
        return place < count ? static_cast<unsigned char>(text[place]) : 0u;
    };
    std::wstring units(count, L'\0'); // a unit takes at least one byte
    std::size_t length = 0;
    for (std::size_t place = 0; place < count; ++length) {
        auto const lead = byte(place);
        unsigned unit = lead;
        std::size_t taken = 1;
        if (lead >= 0xE0 && lead <= 0xEF) {
            unit = (lead & 0x0F) << 12 | (byte(place + 1) & 0x3F) << 6 | (byte(place + 2) & 0x3F);
            taken = 3;
        } else if (lead >= 0x80) {
            unit = (lead & 0x1F) << 6 | (byte(place + 1) & 0x3F);
            taken = 2;
        }
        units[length] = static_cast<wchar_t>(unit);
        place += taken;
    }
    units.resize(length);
    return units;
}

} // namespace qel::Sectrix
