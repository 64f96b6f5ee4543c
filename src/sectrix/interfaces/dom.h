#pragma once

#include "sectrix/foundation/export.h"

#include <cstdint>
#include <new>
#include <string>
#include <string_view>
#include <type_traits>
#include <utility>
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
    Dom() noexcept {}
    /// Makes an integer.
    Dom(int value) noexcept : Dom(std::int64_t{value}) {}
    /// Makes an integer of 64 bits.
    Dom(std::int64_t value) noexcept : m_kind(Kind::Int) { m_value.m_int = value; }
    /// Makes a double, which may be infinite or not a number although JSON text has no form for these.
    Dom(double value) noexcept : m_kind(Kind::Double) { m_value.m_double = value; }
    /// Makes a boolean.
    Dom(bool value) noexcept : m_kind(Kind::Bool) { m_value.m_bool = value; }
    /// Makes a string.
    Dom(std::string const& value);
    /// Makes a string, never a boolean; null makes an empty one.
    Dom(char const* value);

    /// A copy of the whole tree.
    Dom(Dom const& other);
    /// Takes the content over and leaves `other` a fresh node.
    Dom(Dom&& other) noexcept : m_value(other.m_value), m_kind(std::exchange(other.m_kind, Kind::Fresh)) {}
    /// Copies; `other` may be a node within this tree. When memory runs out this node keeps what it had.
    Dom& operator=(Dom const& other);
    /// Takes the content over and leaves `other` a fresh node; `other` may be a node within this tree.
    Dom& operator=(Dom&& other) noexcept {
        // The old content goes last: `other` may stand within it.
        Dom taken(std::move(other));
        std::swap(m_value, taken.m_value);
        std::swap(m_kind, taken.m_kind);
        return *this;
    }
    ~Dom() {
        if (HasBlock())
            Free();
    }

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
    std::uint64_t size() const noexcept { return isArray() && HasBlock() ? List().m_size : 0; }

    /// True for an array.
    bool isArray() const noexcept { return m_kind == Kind::Array; }
    /// True for an object.
    bool isObject() const noexcept { return m_kind == Kind::Object; }
    /// True for a boolean.
    bool isBool() const noexcept { return m_kind == Kind::Bool; }
    /// True for an integer, but not for a double with a whole value.
    bool isInt() const noexcept { return m_kind == Kind::Int; }
    /// True for a double, but not for an integer.
    bool isDouble() const noexcept { return m_kind == Kind::Double; }
    /// True for a string.
    bool isString() const noexcept { return m_kind == Kind::String; }

    /// The value of a boolean, else `fallback`.
    bool asBool(bool fallback) const noexcept { return isBool() ? m_value.m_bool : fallback; }
    /// The value of an integer, or a double cut towards zero and held to the range of 64 bits; else, and for
    /// not-a-number, `fallback`.
    std::int64_t asInt(std::int64_t fallback) const noexcept {
        return isInt() ? m_value.m_int : Truncated(fallback);
    }
    /// The value of a double or of an integer, else `fallback`.
    double asDouble(double fallback) const noexcept {
        return isDouble() ? m_value.m_double : isInt() ? static_cast<double>(m_value.m_int) : fallback;
    }
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
    friend class DomReaderJson;

    enum class Kind : std::uint8_t { Fresh, Bool, Int, Double, String, Array, Object };
    class Memory;

    /// What a node has outside itself: a string, or the children of an array or object. It belongs to one node.
    struct Block {
        union {
            /// Of an array: how many elements there is room for.
            std::uint64_t m_capacity;
            /// Of a block that is to be freed, and all below it: the next of these.
            Block* m_next;
        };
        /// Bytes from the start of the chunk of memory that the block stands in; 0 when it stands by itself.
        std::uint32_t m_offset;
        /// That of the node.
        Kind m_kind;
    };
    /// The elements of an array, which stand behind it.
    struct Elements : Block {
        std::uint64_t m_size;

        Dom* begin() noexcept { return reinterpret_cast<Dom*>(this + 1); }
        Dom* end() noexcept { return begin() + m_size; }
        /// A fresh element at the end; there must be room.
        Dom& Add() noexcept { return *new (begin() + m_size++) Dom(); }
    };
    template <class Content>
    struct Boxed;
    class Ending;

    Dom const& At(std::uint64_t index) const noexcept { return index < size() ? List().begin()[index] : Missing(); }
    static Dom const& Missing() noexcept;
    /// What `asInt` gives for everything but an integer.
    std::int64_t Truncated(std::int64_t fallback) const noexcept;

    /// True unless the node is a leaf without a string, or empty.
    bool HasBlock() const noexcept { return m_kind >= Kind::String && m_value.m_block; }
    Elements& List() const noexcept { return static_cast<Elements&>(*m_value.m_block); }
    /// Make a fresh node a string, an array with room for some elements, or an object.
    /// \param memory  where the block is to stand; null for a place by itself.
    void MakeString(std::string_view text, Memory* memory);
    Elements& MakeArray(std::uint64_t capacity, Memory* memory);
    Members& MakeObject(Memory* memory);
    /// That of a string.
    std::string const& Text() const noexcept;
    /// Frees the block of the node and all below it.
    void Free() noexcept;

    union {
        std::int64_t m_int;
        double m_double;
        bool m_bool;
        /// Null for an empty array or object.
        Block* m_block;
    } m_value{};
    Kind m_kind = Kind::Fresh;
};

} // namespace qel
