#include "sectrix/interfaces/dom_reader_json.h"

#include <cstring>
#include <new>
#include <simdjson.h>

namespace qel {

namespace {

/// The number of children. The parser's own count stops at 2^24 - 1.
template <class Container>
std::size_t Count(Container const& source) {
    std::size_t count = 0;
    for (auto child = source.begin(); child != source.end(); ++child)
        ++count;
    return count;
}

std::string ToString(std::string_view text) {
    return std::string(text);
}

Dom MakeLeaf(simdjson::dom::element const& source) {
    switch (source.type()) {
    case simdjson::dom::element_type::BOOL:
        return Dom(source.get_bool().value_unsafe());
    case simdjson::dom::element_type::INT64:
        return Dom(source.get_int64().value_unsafe());
    case simdjson::dom::element_type::UINT64:
        return Dom(static_cast<double>(source.get_uint64().value_unsafe()));
    case simdjson::dom::element_type::DOUBLE:
        return Dom(source.get_double().value_unsafe());
    case simdjson::dom::element_type::STRING:
        return Dom(ToString(source.get_string().value_unsafe()));
    default:
        return Dom();
    }
}

} // namespace

/// Turns the parser's tree into one of ours, with a list of what is still open instead of a recursion.
struct DomReaderJson::Builder {
    /// The containers whose children are still to be made, and the nodes that these belong to. A node is sized
    /// before its children are listed here, so their addresses stay good.
    std::vector<std::pair<simdjson::dom::element, Dom*>> m_open;

    Dom Build(simdjson::dom::element const& source) {
        Dom root;
        Begin(source, root);
        while (!m_open.empty()) {
            auto const [container, target] = m_open.back();
            m_open.pop_back();
            if (container.is_array())
                FillArray(container.get_array().value_unsafe(), *target);
            else
                FillObject(container.get_object().value_unsafe(), *target);
        }
        return root;
    }

    void Begin(simdjson::dom::element const& source, Dom& target) {
        if (source.is_array() || source.is_object())
            m_open.emplace_back(source, &target);
        else
            target = MakeLeaf(source);
    }

    void FillArray(simdjson::dom::array const& source, Dom& target) {
        auto const count = Count(source);
        auto child = target.m_value.emplace<Dom::Elements>(count).begin();
        for (auto const element : source)
            Begin(element, *child++);
    }

    void FillObject(simdjson::dom::object const& source, Dom& target) {
        auto const count = Count(source);
        auto child = target.m_value.emplace<Dom::Members>(count).begin();
        for (auto const field : source) {
            child->first = field.key;
            Begin(field.value, (child++)->second);
        }
    }
};

bool DomReaderJson::FromString(Dom& dom, char const* text, std::string* error) {
    if (std::strncmp(text, "\xEF\xBB\xBF", 3) == 0)
        text += 3;
    simdjson::dom::parser parser;
    simdjson::dom::element root;
    auto const failure = parser.parse(text, std::strlen(text)).get(root);
    if (failure == simdjson::MEMALLOC)
        throw std::bad_alloc();
    dom = failure ? Dom() : Builder().Build(root);
    if (error)
        *error = failure ? simdjson::error_message(failure) : "";
    return !failure;
}

} // namespace qel
