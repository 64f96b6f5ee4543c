#include "sectrix/foundation/text_conversion.h"
#include "target.h"

using namespace qel::Sectrix;

namespace fuzz {

namespace {

/// The two tables of the conversion, read one unit at a time.
std::wstring PlainUnits(std::string const& bytes) {
    std::wstring units;
    for (std::size_t i = 0; i < bytes.size();) {
        auto const byte = [&](std::size_t place, unsigned mask) {
            return place < bytes.size() ? static_cast<unsigned char>(bytes[place]) & mask : 0u;
        };
        unsigned const lead = byte(i, 0xFF);
        std::size_t const size = lead < 0x80 ? 1 : lead >= 0xE0 && lead <= 0xEF ? 3 : 2;
        units +=
            static_cast<wchar_t>(size == 1   ? lead
                                 : size == 2 ? (lead & 0x1F) * 64 + byte(i + 1, 0x3F)
                                             : (lead & 0xF) * 4096 + byte(i + 1, 0x3F) * 64 + byte(i + 2, 0x3F));
        i += size;
    }
    return units;
}

std::string PlainBytes(std::wstring const& units) {
    std::string bytes;
    auto const push = [&bytes](unsigned value) { bytes += static_cast<char>(value); };
    auto const unit = [&push](unsigned value) {
        if (value < 0x80)
            return push(value);
        if (value < 0x800)
            push(0xC0 + value / 64);
        else {
            push(0xE0 + value / 4096);
            push(0x80 + value / 64 % 64);
        }
        push(0x80 + value % 64);
    };
    for (auto const element : units) {
        auto const value = static_cast<unsigned>(element);
        bool const isPair = value >= 0x10000 && value <= 0x10FFFF;
        if (isPair)
            unit(0xD800 + (value - 0x10000) / 1024);
        unit(isPair ? 0xDC00 + value % 1024 : value % 0x10000);
    }
    return bytes;
}

/// One wide element from each four bytes, lowest first. Where `wchar_t` has 16 bits, a code point beyond these
/// becomes its two surrogates, and anything else keeps its low bits.
std::wstring WideElements(std::string const& bytes) {
    std::wstring elements;
    for (std::size_t i = 0; i + 4 <= bytes.size(); i += 4) {
        std::uint32_t value = 0;
        for (std::size_t k = 4; k-- > 0;)
            value = value << 8 | static_cast<unsigned char>(bytes[i + k]);
        if (sizeof(wchar_t) == 2 && value >= 0x10000 && value <= 0x10FFFF) {
            elements += static_cast<wchar_t>(0xD800 + (value - 0x10000) / 1024);
            value = 0xDC00 + value % 1024;
        }
        elements += static_cast<wchar_t>(value);
    }
    return elements;
}

} // namespace

std::string RunText(std::string const& bytes) {
    auto const units = Utf8ToW(bytes);
    Require(units == PlainUnits(bytes.c_str()), "units of bytes");
    auto const narrow = ToUtf8(units);
    Require(narrow == PlainBytes(units.c_str()), "bytes of units");
    Require(Utf8ToW(narrow) == units.c_str(), "units come back");

    auto const wide = WideElements(bytes);
    auto const wideBytes = ToUtf8(wide);
    Require(wideBytes == PlainBytes(wide.c_str()), "bytes of any elements");
    // An element beyond those of text whose low bits are zeros ends the text where `wchar_t` has 16 bits.
    return narrow + '\n' + wideBytes.c_str();
}

} // namespace fuzz
