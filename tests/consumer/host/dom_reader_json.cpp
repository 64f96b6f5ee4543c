#include "sectrix/interfaces/dom_reader_json.h"

#include <nlohmann/json.hpp>
#include <vector>

namespace qel {

/// Takes the parser's events and builds the tree by them.
struct DomReaderJson::Builder {
    /// A new node in the container that is open, or the root. Of equal keys the later one counts.
    Dom& Next() {
        if (m_open.empty())
            return m_root;
        Dom& parent = *m_open.back();
        Dom& node = parent.isArray() ? parent.append() : parent[m_key];
        node = Dom();
        return node;
    }
    bool Put(Dom&& value) {
        Next() = std::move(value);
        return true;
    }
    bool Open(Dom& container) {
        m_open.push_back(&container);
        return m_open.size() <= 1024; // the tree is taken down by recursion
    }
    bool Close() {
        m_open.pop_back();
        return true;
    }

    bool null() { return Put(Dom()); }
    bool boolean(bool value) { return Put(Dom(value)); }
    bool number_integer(std::int64_t value) { return Put(Dom(value)); }
    bool number_unsigned(std::uint64_t value) {
        return value <= INT64_MAX ? Put(Dom(static_cast<std::int64_t>(value)))
                                  : Put(Dom(static_cast<double>(value)));
    }
    bool number_float(double value, std::string const&) { return Put(Dom(value)); }
    bool string(std::string const& value) { return Put(Dom(value)); }
    bool binary(nlohmann::json::binary_t const&) { return false; }
    bool start_object(std::size_t) { return Open(Next().toObject()); }
    bool start_array(std::size_t) { return Open(Next().toArray()); }
    bool end_object() { return Close(); }
    bool end_array() { return Close(); }
    bool key(std::string const& key) {
        m_key = key;
        return true;
    }
    bool parse_error(std::size_t, std::string const&, std::exception const&) { return false; }

    Dom& m_root;
    std::vector<Dom*> m_open = {};
    std::string m_key = {};
};

bool DomReaderJson::FromString(Dom& dom, char const* text, std::string*) {
    Dom read;
    Builder builder{read};
    bool const isGood = nlohmann::json::sax_parse(text, &builder);
    if (isGood)
        dom = std::move(read);
    else
        dom = Dom();
    return isGood;
}

} // namespace qel
