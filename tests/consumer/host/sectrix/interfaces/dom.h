#pragma once

#include <cstdint>
#include <list>
#include <set>
#include <string>
#include <utility>

/// \file
/// A host's own document tree: the operations that the library asks for, and no others.
///
/// The tree relies on what its callers promise, and ends the program when a promise is broken. Its only public
/// types of an index and a key are those of the list, so that any other one does not compile.

namespace qel {

class Dom {
public:
    using Members = std::list<std::pair<std::string, Dom>>;

    Dom();
    explicit Dom(int value);
    explicit Dom(double value);
    explicit Dom(bool value);
    explicit Dom(std::string const& value);
    Dom(Dom&&) = delete;
    Dom& operator=(Dom&& other) noexcept;
    ~Dom();

    bool has(char const* key) const;
    /// Promised: `has` was true of the key before, or the key is "outlines".
    Dom const& operator[](char const* key) const;
    /// Promised: the index was compared with `size` before, and is below it.
    Dom const& operator[](std::uint64_t index) const;
    std::uint64_t size() const;
    bool isArray() const;
    bool isObject() const;
    bool isBool() const;
    /// Promised of this and the next three: the fallback is false, 0 or empty.
    bool asBool(bool fallback) const;
    std::int64_t asInt(std::int64_t fallback) const;
    double asDouble(double fallback) const;
    std::string asString(std::string const& fallback) const;
    /// Promised: `isObject` was true before.
    Members const& objects() const;

    /// Promised: the node is an object or fresh.
    Dom& operator[](char const* key);
    Dom& operator[](std::string const& key);
    /// Promised: the node is an array or fresh.
    Dom& append();
    /// Promised of this and the next: the node is fresh.
    Dom& toArray();
    Dom& toObject();

private:
    enum class Kind { Fresh, Boolean, Integer, Double, String, Array, Object, Gone };

    friend class DomReaderJson;

    explicit Dom(std::int64_t value);

    /// The kind of the node, which must not have got a later sibling since the caller came by it.
    Kind GetKind() const;
    Dom const* Find(std::string const& key) const;
    Dom& Add(std::string const& key);

    Kind m_kind = Kind::Fresh;
    /// A boolean too.
    std::int64_t m_integer = 0;
    double m_double = 0.0;
    std::string m_string;
    /// Those of an array have no key.
    Members m_children;

    // What the callers have asked.
    mutable std::set<std::string> m_foundKeys;
    mutable bool m_isSizeKnown = false;
    mutable bool m_isObjectKnown = false;
};

} // namespace qel
