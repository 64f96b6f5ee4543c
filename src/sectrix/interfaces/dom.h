#pragma once

#include "sectrix/foundation/export.h"

#include <cstdint>
#include <string>
#include <type_traits>
#include <utility>
#include <variant>
#include <vector>

/// \file
/// The tree of a parsed JSON document.

namespace qel {

/// A node of a JSON document, and a value: it owns its children.
///
/// A node is a boolean, an integer, a double, a string, an array, an object, or a fresh node that is none of these
/// yet; a JSON null is a fresh node. Keys and strings are bytes of UTF-8, never transcoded. An object keeps its
/// members in document order, equal keys included.
///
/// No reading call raises anything on any kind of node: a wrong kind gives the fallback, and an element or member
/// that is not there gives one shared, constant, fresh node. A reference into a node is good until that node gets
/// its next sibling. Trees of any depth are copied and destroyed within a fixed amount of stack.
///
/// Distinct trees may be used from distinct threads, and one tree may be read by several.
class SECTRIX_JSON_EXPORT Dom {
public:
    /// The members of an object: key and value, in document order.
    using Members = std::vector<std::pair<std::string, Dom>>;

    /// Makes a fresh node.
    Dom() noexcept;
    /// Makes an integer.
    Dom(int value) noexcept;
    /// Makes an integer of 64 bits.
    Dom(std::int64_t value) noexcept;
    /// Makes a double, which may be infinite or not a number although JSON text has no form for these.
    Dom(double value) noexcept;
    /// Makes a boolean.
    Dom(bool value) noexcept;
    /// Makes a string.
    Dom(std::string const& value);
    /// Makes a string, never a boolean; null makes an empty one.
    Dom(char const* value);

    /// A copy of the whole tree.
    Dom(Dom const& other);
    /// Takes the content over and leaves `other` a fresh node.
    Dom(Dom&& other) noexcept;
    /// Copies; `other` may be a node within this tree. When memory runs out this node keeps what it had.
    Dom& operator=(Dom const& other);
    /// Takes the content over and leaves `other` a fresh node; `other` may be a node within this tree.
    Dom& operator=(Dom&& other) noexcept;
    ~Dom();

    /// \name Reading
    /// @{

    /// True when the node is an object with a member of this key. Costs a walk of the members.
    bool has(char const* key) const noexcept;
    /// The value of the last member with this key, else the shared fresh node. Costs a walk of the members.
    Dom const& operator[](char const* key) const noexcept;
    /// The element of an array, counted from 0; else the shared fresh node. Takes what converts to 64 bits without
    /// a sign by itself, as an argument of that type would; but a template, so that a literal 0 is no null key.
    template <class Index, std::enable_if_t<std::is_convertible_v<Index, std::uint64_t>, int> = 0>
    Dom const& operator[](Index index) const noexcept {
        return At(static_cast<std::uint64_t>(index));
    }
    /// The same on a node that may be changed; the element still may not.
    template <class Index, std::enable_if_t<std::is_convertible_v<Index, std::uint64_t>, int> = 0>
    Dom const& operator[](Index index) noexcept {
        return At(static_cast<std::uint64_t>(index));
    }
    /// The number of elements of an array; 0 for every other node, objects included: `objects` has their members.
    std::uint64_t size() const noexcept;

    /// True for an array.
    bool isArray() const noexcept { return std::holds_alternative<Elements>(m_value); }
    /// True for an object.
    bool isObject() const noexcept { return std::holds_alternative<Members>(m_value); }
    /// True for a boolean.
    bool isBool() const noexcept { return std::holds_alternative<bool>(m_value); }
    /// True for an integer, but not for a double with a whole value.
    bool isInt() const noexcept { return std::holds_alternative<std::int64_t>(m_value); }
    /// True for a double, but not for an integer.
    bool isDouble() const noexcept { return std::holds_alternative<double>(m_value); }
    /// True for a string.
    bool isString() const noexcept { return std::holds_alternative<std::string>(m_value); }

    /// The value of a boolean, else `fallback`.
    bool asBool(bool fallback) const noexcept;
    /// The value of an integer, or a double cut towards zero and held to the range of 64 bits; else, and for
    /// not-a-number, `fallback`.
    std::int64_t asInt(std::int64_t fallback) const noexcept;
    /// The value of a double or of an integer, else `fallback`.
    double asDouble(double fallback) const noexcept;
    /// The value of a string, else `fallback`.
    std::string asString(std::string const& fallback) const;

    /// The members of an object in document order, equal keys included; empty for every other node.
    Members const& objects() const noexcept;

    /// @}
    /// \name Building
    /// @{

    /// The value of the last member with this key, which is added as a fresh node when there is none. A node that
    /// is no object becomes an empty one first.
    Dom& operator[](std::string const& key);
    /// The same; not null.
    Dom& operator[](char const* key);
    /// Adds a fresh element at the end of an array and returns it. A node that is no array becomes an empty one
    /// first.
    Dom& append();
    /// Makes the node an empty array, whatever it was, and returns it.
    Dom& toArray() noexcept;
    /// Makes the node an empty object, whatever it was, and returns it.
    Dom& toObject() noexcept;

    /// @}

private:
    using Elements = std::vector<Dom>;

    friend class DomReaderJson;

    Dom const& At(std::uint64_t index) const noexcept;
    /// The last element or the value of the last member; null when there is none.
    Dom* LastChild() noexcept;
    void DropLastChild() noexcept;
    bool IsChildless() const noexcept;
    /// True when no child has children.
    bool IsShallow() const noexcept;
    void Dismantle() noexcept;

    /// The kind of the node and its value; a fresh node holds no value.
    std::variant<std::monostate, bool, std::int64_t, double, std::string, Elements, Members> m_value;
};

} // namespace qel
