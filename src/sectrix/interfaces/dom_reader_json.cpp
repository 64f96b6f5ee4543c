#include "sectrix/interfaces/dom_reader_json.h"

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

    /// Makes a leaf of a fresh node, or lists a container.
    void Begin(simdjson::dom::element const& source, Dom& target) {
        switch (source.type()) {
        case simdjson::dom::element_type::ARRAY:
        case simdjson::dom::element_type::OBJECT:
            m_open.emplace_back(source, &target);
            break;
        case simdjson::dom::element_type::BOOL:
            target.m_value = source.get_bool().value_unsafe();
            break;
        case simdjson::dom::element_type::INT64:
            target.m_value = source.get_int64().value_unsafe();
            break;
        case simdjson::dom::element_type::UINT64:
            target.m_value = static_cast<double>(source.get_uint64().value_unsafe());
            break;
        case simdjson::dom::element_type::DOUBLE:
            target.m_value = source.get_double().value_unsafe();
            break;
        case simdjson::dom::element_type::STRING:
            target.m_value.emplace<std::string>(source.get_string().value_unsafe());
            break;
        case simdjson::dom::element_type::NULL_VALUE:
            break;
        }
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
