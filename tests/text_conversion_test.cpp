#include "sectrix/foundation/text_conversion.h"

#include <cstdint>
#include <gtest/gtest.h>

using namespace qel::Sectrix;

namespace {

struct Case {
    std::string bytes;
    std::wstring units;
};

TEST(TextConversion, WideUnitsGiveTheirFormAndComeBack) {
    Case const cases[] = {
        {"\x01\x41\x7F", {0x01, 0x41, 0x7F}},
        {"\xC2\x80\xC3\xA9\xDF\xBF", {0x80, 0xE9, 0x7FF}},
        {"\xE0\xA0\x80\xE2\x82\xAC\xEF\xBF\xBF", {0x800, 0x20AC, 0xFFFF}},
        {"\xED\xA0\xBD\xED\xB8\x80", {0xD83D, 0xDE00}},
        {"\xED\xB8\x80\x41\xED\xA0\xBD", {0xDE00, 0x41, 0xD83D}},
    };
    for (auto const& [bytes, units] : cases) {
        EXPECT_EQ(ToUtf8(units), bytes);
        EXPECT_EQ(ToUtf8(units.c_str()), bytes);
        EXPECT_EQ(Utf8ToW(bytes), units);
        EXPECT_EQ(Utf8ToW(bytes.c_str()), units);
    }
    std::wstring all;
    for (std::uint32_t unit = 1; unit <= 0xFFFF; ++unit)
        all += static_cast<wchar_t>(unit);
    EXPECT_EQ(ToUtf8(all).size(), 0x7Fu + 2 * 0x780u + 3 * 0xF800u);
    EXPECT_TRUE(Utf8ToW(ToUtf8(all)) == all);

    if (sizeof(wchar_t) >= 4) { // an element beyond the units is the surrogates that it stands for
        std::wstring const wide{static_cast<wchar_t>(0x10000), static_cast<wchar_t>(0x10FFFF)};
        EXPECT_EQ(ToUtf8(wide), ToUtf8(std::wstring{0xD800, 0xDC00, 0xDBFF, 0xDFFF}));
    }
}

TEST(TextConversion, BadAndCutOffBytesAreReadByTheirLead) {
    Case const cases[] = {
        {"\xF0\x9F\x98\x80", {0x041F, 0x0600}}, // a form of four bytes is two of two
        {"\xC0\x80\x41", {0, 0x41}},
        {"\xE0\x80\x80\x41", {0, 0x41}},
        {"\xC1\x81", {0x41}}, // overlong
        {"\x80", {0}},
        {"\x80\x41\x42", {1, 0x42}}, // swallows the byte behind it
        {"\xBF", {0x7C0}},
        {"\xC3", {0xC0}},
        {"\xFF\xFF", {0x7FF}},
        {"\xE2", {0x2000}},
        {"\xE2\x82", {0x2080}},
        {"\x41\xE2\x82", {0x41, 0x2080}},
        {"\xE2\xC3\x28", {0x20E8}},
        {std::string("\xE2\0\xAC", 3), {0x2000}}, // ends at the zero, also within a form
    };
    for (auto const& [bytes, units] : cases)
        EXPECT_EQ(Utf8ToW(bytes), units) << testing::PrintToString(bytes);
}

TEST(TextConversion, AZeroEndsTheInputAndNullIsEmpty) {
    EXPECT_EQ(ToUtf8(std::wstring(L"ab\0cd", 5)), "ab");
    EXPECT_EQ(Utf8ToW(std::string("ab\0cd", 5)), L"ab");
    EXPECT_EQ(ToUtf8(static_cast<wchar_t const*>(nullptr)), "");
    EXPECT_EQ(Utf8ToW(static_cast<char const*>(nullptr)), L"");
    EXPECT_EQ(ToUtf8(L"") + ToUtf8(std::wstring()), "");
    EXPECT_EQ(Utf8ToW("") + Utf8ToW(std::string()), L"");
}

} // namespace
