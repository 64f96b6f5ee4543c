#include "sectrix/interfaces/dom_reader_json.h"
#include "sectrix/interfaces/detail/dom_memory.h"

#include <charconv>
#include <cmath>
#include <cstring>
#include <new>
#include <simdjson.h>

namespace qel {

namespace {

/// The number of children, of which the parser keeps count up to a limit.
template <class Container>
std::size_t Count(Container const& source) {
    std::size_t const limit = 0xFFFFFF;
    if (source.size() < limit)
        return source.size();
    std::size_t count = 0;
    for (auto child = source.begin(); child != source.end(); ++child)
        ++count;
    return count;
}

#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
/// Reads the number that comes next in a text known to be good, and moves `text` behind it. Strings are passed
/// over.
std::from_chars_result NextNumber(char const*& text, char const* end, double& value) {
    for (bool isInString = false; isInString || !(*text == '-' || (*text >= '0' && *text <= '9')); ++text) {
        if (*text == '"')
            isInString = !isInString;
        else if (*text == '\\') // only in strings
            ++text;
    }
    auto const result = std::from_chars(text, end, value);
    text = result.ptr;
    return result;
}

/// Puts numbers right on machines that store the highest byte of a word first, where simdjson 3.0.1 misreads eight
/// digits in a row behind a point. Its answer, the tape, has all values in the order of the text: a word whose
/// highest byte is the kind, and for a number its bits in the word behind. Each that is no integer is read again
/// from the text. Near the greatest double the parser may still have refused, misread, a number that is in range.
simdjson::error_code MendNumbers(simdjson::dom::document& document, char const* text, std::size_t length) {
    auto const* const end = text + length;
    auto* const tape = document.tape.get();
    auto const size = tape[0] & 0xFFFFFFFFFFFFFF;
    for (std::size_t i = 1; i < size; ++i) {
        auto const kind = static_cast<char>(tape[i] >> 56);
        if (kind != 'd' && kind != 'l' && kind != 'u')
            continue;
        ++i;
        double value = 0.0, misread = 0.0; // an integer is only passed over
        std::memcpy(&misread, &tape[i], sizeof misread);
        if (NextNumber(text, end, value).ec != std::errc()) { // beyond double, or too small for one
            if (std::abs(misread) > 1.0)
                return simdjson::NUMBER_ERROR;
            value = std::copysign(0.0, misread);
        }
        if (kind == 'd')
            std::memcpy(&tape[i], &value, sizeof value);
    }
    return simdjson::SUCCESS;
}
#endif

} // namespace

/// Turns the parser's tree into one of ours.
struct DomReaderJson::Builder {
    Dom::Memory m_memory;
    /// The containers, some levels deep, whose children are still to be made, and the nodes that these belong to.
    /// So the recursion is of a depth that no document chooses. A node has room for all its children before the
    /// first is made, so their addresses stay good.
    std::vector<std::pair<simdjson::dom::element, Dom*>> m_open;

    Dom Build(simdjson::dom::element const& source) {
        Dom root;
        Fill(source, root, 0);
        while (!m_open.empty()) {
            auto const [container, target] = m_open.back();
            m_open.pop_back();
            Fill(container, *target, 0);
        }
        return root;
    }

    /// Makes what `source` is of a fresh node.
    void Fill(simdjson::dom::element const& source, Dom& target, int depth) {
        int const greatestDepth = 16;
        switch (source.type()) {
        case simdjson::dom::element_type::ARRAY:
        case simdjson::dom::element_type::OBJECT:
            if (depth == greatestDepth)
                m_open.emplace_back(source, &target);
            else if (source.is_array())
                FillArray(source.get_array().value_unsafe(), target.toArray(), depth + 1);
            else
                FillObject(source.get_object().value_unsafe(), target.toObject(), depth + 1);
            break;
        case simdjson::dom::element_type::BOOL:
            target = source.get_bool().value_unsafe();
            break;
        case simdjson::dom::element_type::INT64:
            target = source.get_int64().value_unsafe();
            break;
        case simdjson::dom::element_type::UINT64:
            target = static_cast<double>(source.get_uint64().value_unsafe());
            break;
        case simdjson::dom::element_type::DOUBLE:
            target = source.get_double().value_unsafe();
            break;
        case simdjson::dom::element_type::STRING:
            target.MakeString(source.get_string().value_unsafe(), &m_memory);
            break;
        case simdjson::dom::element_type::NULL_VALUE:
            break;
        }
    }

    void FillArray(simdjson::dom::array const& source, Dom& target, int depth) {
        auto const count = Count(source);
        if (count == 0)
            return;
        auto& elements = target.MakeArray(count, &m_memory);
        for (auto const element : source)
            Fill(element, elements.Add(), depth);
    }

    void FillObject(simdjson::dom::object const& source, Dom& target, int depth) {
        auto const count = Count(source);
        if (count == 0)
            return;
        auto& members = target.MakeObject(&m_memory);
        members.reserve(count);
        for (auto const field : source)
            Fill(field.value, members.emplace_back(field.key, Dom()).second, depth);
    }
};

bool DomReaderJson::FromString(Dom& dom, char const* text, std::string* error) {
    if (std::strncmp(text, "\xEF\xBB\xBF", 3) == 0)
        text += 3;
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    auto const length = std::strlen(text);
    auto failure = parser.parse(text, length).get(root);
#if defined(__BYTE_ORDER__) && __BYTE_ORDER__ == __ORDER_BIG_ENDIAN__
    if (!failure)
        failure = MendNumbers(parser.doc, text, length);
#endif
    if (failure == simdjson::MEMALLOC)
        throw std::bad_alloc();
    dom = failure ? Dom() : Builder().Build(root);
    if (error)
        *error = failure ? simdjson::error_message(failure) : "";
    return !failure;
}

} // namespace qel
