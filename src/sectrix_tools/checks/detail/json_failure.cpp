#include "sectrix_tools/checks/detail/json_failure.h"

#include <algorithm>
#include <cstdint>
#include <cstdio>
#include <iterator>
#include <string_view>
#include <vector>

// What is checked here is the caller's text, never the library's own state.
#define JSON_ASSERT(condition) static_cast<void>(condition)
#include <nlohmann/json.hpp>

// The reader of documents is built for speed: it says what kind of fault there is, but neither the place nor what
// it expected there. So a text that it has refused is parsed once more, by a parser that knows both.

namespace qel::SectrixTools {

namespace {

using Json = nlohmann::json;

/// Reads a text and lets others see how far it has come.
class Progress {
public:
    using iterator_category = std::input_iterator_tag;
    using value_type = char;
    using difference_type = std::ptrdiff_t;
    using pointer = char const*;
    using reference = char const&;

    Progress(char const* at, char const** reached) : m_at(at), m_reached(reached) {}

    reference operator*() const { return *m_at; }
    Progress& operator++() {
        *m_reached = ++m_at;
        return *this;
    }
    bool operator==(Progress const& other) const { return m_at == other.m_at; }
    bool operator!=(Progress const& other) const { return m_at != other.m_at; }

private:
    char const* m_at;
    char const** m_reached;
};

bool IsPartOfWord(char letter) {
    return (letter >= '0' && letter <= '9') || (letter >= 'a' && letter <= 'z') ||
           (letter >= 'A' && letter <= 'Z') || letter == '.' || letter == '+' || letter == '-' || letter == '_';
}

std::size_t StartOfWord(std::string_view text, std::size_t place) {
    while (place > 0 && IsPartOfWord(text[place - 1]))
        --place;
    return place;
}

/// The opening quote of the string whose closing quote is at `place`. Each quote between is escaped: an odd number
/// of backslashes stands before it.
std::size_t StartOfString(std::string_view text, std::size_t place) {
    while (place > 0) {
        if (text[--place] != '"')
            continue;
        auto before = place;
        while (before > 0 && text[before - 1] == '\\')
            --before;
        if ((place - before) % 2 == 0)
            break;
    }
    return place;
}

/// The first byte of the character that goes wrong at `place`.
std::size_t StartOfCharacter(std::string_view text, std::size_t place) {
    for (std::size_t back = 1; back <= 3 && back <= place; ++back) {
        auto const byte = static_cast<unsigned char>(text[place - back]);
        if (byte < 0x80)
            break;
        std::size_t const length = byte < 0xC0 ? 0 : byte < 0xE0 ? 2 : byte < 0xF0 ? 3 : 4;
        if (length > 0) // a first byte: of this character, or of the whole one before it
            return length > back ? place - back : place;
    }
    return place;
}

bool Contains(std::string_view text, std::string_view part) {
    return text.find(part) != std::string_view::npos;
}

/// Takes what the parser meets, and stops at the first fault.
class FailureFinder {
public:
    explicit FailureFinder(std::string const& text) : m_text(text) {}

    bool Find(JsonFailure& failure) {
        m_failure = &failure;
        auto const* const begin = m_text.data();
        m_reached = begin;
        return !Json::sax_parse(Progress(begin, &m_reached), Progress(begin + m_text.size(), &m_reached), this);
    }

    // What the parser calls; false ends the parse.
    bool null() { return BeginValue(); }
    bool boolean(bool) { return BeginValue(); }
    bool number_integer(Json::number_integer_t) { return BeginValue(); }
    bool number_unsigned(Json::number_unsigned_t) { return BeginValue(); }
    bool number_float(double, std::string const& written) {
        if (!BeginValue())
            return false;
        if (written.find_first_of(".eE") != std::string::npos)
            return true;
        // The parser has read one letter further, save at the end of the text.
        auto const next = Reached() - (Reached() > 0 && !IsPartOfWord(m_text[Reached() - 1]));
        return Fail("number-out-of-range", "a whole number must fit into 64 bits", StartOfWord(m_text, next));
    }
    bool string(std::string&) { return BeginValue(); }
    bool binary(Json::binary_t&) { return BeginValue(); }
    bool key(std::string&) { return BeginValue(); }
    bool start_object(std::size_t) { return Open(); }
    bool start_array(std::size_t) { return Open(); }
    bool end_object() { return Close(); }
    bool end_array() { return Close(); }
    bool parse_error(std::size_t count, std::string const&, nlohmann::detail::exception const& exception) {
        auto const place = std::min(count > 0 ? count - 1 : 0, m_text.size());
        if (exception.id == 406)
            return Fail("number-out-of-range", "a number must be within the range of a double, up to 1.8e308",
                        StartOfWord(m_text, place));
        return Explain(exception.what(), place);
    }

private:
    /// A container at this depth may be empty only.
    static constexpr std::size_t kDeepest = 1024;
    /// The parser's words for what may follow the whole value.
    static constexpr std::string_view kExpectsEnd = "; expected end of input";

    std::size_t Reached() const { return static_cast<std::size_t>(m_reached - m_text.data()); }

    bool Fail(char const* code, std::string message, std::size_t place) {
        *m_failure = {code, std::move(message), place};
        return false;
    }

    bool BeginValue() {
        return m_open.size() < kDeepest ||
               Fail("text-too-deep", "lists and objects may be nested 1024 deep at most", m_open.back());
    }

    bool Open() {
        if (!BeginValue())
            return false;
        m_open.push_back(Reached() - 1);
        return true;
    }

    bool Close() {
        m_open.pop_back();
        return true;
    }

    /// From the parser's words, "... while parsing CONTEXT - REASON; last read: '...'; expected TOKEN", to ours.
    bool Explain(std::string_view words, std::size_t place) {
        auto const context = words.substr(std::min(words.find("while parsing "), words.size()));
        auto reason = context.substr(std::min(context.find(" - ") + 3, context.size()));
        reason = reason.substr(0, reason.find("; last read"));

        if (Contains(reason, "UTF-8")) {
            place = StartOfCharacter(m_text, place);
            char byte[8] = "";
            if (place < m_text.size())
                std::snprintf(byte, sizeof byte, "0x%02X", static_cast<unsigned char>(m_text[place]));
            return Fail("text-not-utf-8",
                        std::string("the byte ") + byte + " is no UTF-8; the text may be Latin-1 or Windows-1252",
                        place);
        }
        bool const isWord = Contains(reason, "invalid literal");
        if (Contains(reason, "U+000A") || Contains(reason, "U+000D"))
            return Fail("text-no-json", "no JSON: the line ends where a closing quote is expected", place);
        if (!isWord && Contains(reason, "invalid ")) // a string or a number
            return Fail("text-no-json", "no JSON: " + std::string(reason), place);
        auto const expected = Expected(context, words);
        if (place == m_text.size() && !Contains(words, kExpectsEnd))
            return Fail("text-no-json", "no JSON: the text ends where " + expected + WhatIsOpen(expected, place),
                        place);
        auto const last = place;
        bool const isString = Contains(reason, "unexpected string literal");
        if (isString)
            place = StartOfString(m_text, place);
        else if (IsPartOfWord(m_text[place]) || (isWord && static_cast<unsigned char>(m_text[place]) < 0x80))
            place = StartOfWord(m_text, place);
        return Fail("text-no-json",
                    "no JSON: " + Found(place, isString ? last + 1 : place + 1) + " stands where " + expected +
                        WhatIsOpen(expected, place),
                    place);
    }

    /// What begins at `place`: up to `end`, or to the end of the word. A character outside of ASCII is not shown:
    /// some look like quotes or like nothing.
    std::string Found(std::size_t place, std::size_t end) const {
        std::string_view const text = m_text;
        if (static_cast<unsigned char>(text[place]) >= 0x80)
            return "a character outside of ASCII";
        while (end < text.size() && IsPartOfWord(text[end - 1]) && IsPartOfWord(text[end]))
            ++end;
        auto const found = text.substr(place, end - place);
        return found.size() <= 40 ? std::string(found) : "text";
    }

    /// Where the list or the object that should have ended begins, unless that is on the same line.
    std::string WhatIsOpen(std::string_view expected, std::size_t place) const {
        if (!Contains(expected, "a comma or"))
            return {};
        auto const at = [this](std::size_t offset) { return m_text.begin() + static_cast<std::ptrdiff_t>(offset); };
        auto const start = m_open.back();
        if (std::find(at(start), at(place), '\n') == at(place))
            return {};
        return std::string("; the ") + (m_text[start] == '[' ? "list" : "object") + " that begins on line " +
               std::to_string(1 + std::count(m_text.begin(), at(start), '\n')) + " is open";
    }

    static std::string Expected(std::string_view context, std::string_view words) {
        auto const isParsing = [context](std::string_view what) {
            return context.substr(std::min(context.find("parsing ") + 8, context.size()), what.size()) == what;
        };
        if (Contains(words, kExpectsEnd))
            return "the end of the text is expected";
        if (isParsing("object key"))
            return "a key in double quotes is expected";
        if (isParsing("object separator"))
            return "a colon is expected";
        if (isParsing("object"))
            return "a comma or } is expected";
        if (isParsing("array"))
            return "a comma or ] is expected";
        return "a value is expected";
    }

    std::string const& m_text;
    char const* m_reached = nullptr;
    JsonFailure* m_failure = nullptr;
    /// The places of the containers that are open.
    std::vector<std::size_t> m_open;
};

} // namespace

JsonFailure FindJsonFailure(std::string const& text, std::string const& reason) {
    JsonFailure failure{"text-no-json", reason, 0};
    FailureFinder(text).Find(failure);
    return failure;
}

} // namespace qel::SectrixTools
