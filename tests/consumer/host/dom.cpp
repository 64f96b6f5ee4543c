#include "sectrix/interfaces/dom.h"
#include "sectrix/interfaces/promise.h"

#include <algorithm>
#include <cmath>

namespace qel {

using host::Promise;

Dom::Dom() = default;
Dom::Dom(int value) : Dom(std::int64_t{value}) {}
Dom::Dom(std::int64_t value) : m_kind(Kind::Integer), m_integer(value) {}
Dom::Dom(double value) : m_kind(Kind::Double), m_double(value) {}
Dom::Dom(bool value) : m_kind(Kind::Boolean), m_integer(value) {}
Dom::Dom(std::string const& value) : m_kind(Kind::String), m_string(value) {}
Dom::~Dom() = default;

Dom& Dom::operator=(Dom&& other) noexcept {
    GetKind();
    m_kind = std::exchange(other.m_kind, Kind::Gone);
    m_integer = other.m_integer;
    m_double = other.m_double;
    m_string = std::move(other.m_string);
    m_children = std::move(other.m_children);
    m_foundKeys.clear();
    m_isSizeKnown = m_isObjectKnown = false;
    return *this;
}

Dom::Kind Dom::GetKind() const {
    Promise(m_kind != Kind::Gone, "a reference is not used once a later sibling has been added");
    return m_kind;
}

Dom const* Dom::Find(std::string const& key) const {
    auto const found = std::find_if(m_children.begin(), m_children.end(),
                                    [&](auto const& member) { return isObject() && member.first == key; });
    return found == m_children.end() ? nullptr : &found->second;
}

bool Dom::has(char const* key) const {
    bool const isFound = Find(key) != nullptr;
    if (isFound)
        m_foundKeys.insert(key);
    return isFound;
}

Dom const& Dom::operator[](char const* key) const {
    static Dom const absent;
    Promise(m_foundKeys.count(key) || key == std::string("outlines"), "has comes before a member");
    auto const* member = Find(key);
    return member ? *member : absent;
}

Dom const& Dom::operator[](std::uint64_t index) const {
    Promise(m_isSizeKnown && index < size(), "an index is below the size");
    return std::next(m_children.begin(), static_cast<std::ptrdiff_t>(index))->second;
}

std::uint64_t Dom::size() const {
    m_isSizeKnown = true;
    return isArray() ? m_children.size() : 0;
}

bool Dom::isArray() const {
    return GetKind() == Kind::Array;
}
bool Dom::isObject() const {
    m_isObjectKnown = GetKind() == Kind::Object;
    return m_isObjectKnown;
}
bool Dom::isBool() const {
    return GetKind() == Kind::Boolean;
}

bool Dom::asBool(bool fallback) const {
    Promise(!fallback, "the fallback is false");
    return isBool() && m_integer;
}

std::int64_t Dom::asInt(std::int64_t fallback) const {
    Promise(fallback == 0, "the fallback is 0");
    if (GetKind() != Kind::Double)
        return m_kind == Kind::Integer ? m_integer : 0;
    return m_double >= 0x1p63     ? INT64_MAX
           : m_double >= -0x1p63  ? static_cast<std::int64_t>(m_double)
           : std::isnan(m_double) ? 0
                                  : INT64_MIN;
}

double Dom::asDouble(double fallback) const {
    Promise(fallback == 0.0, "the fallback is 0.0");
    return GetKind() == Kind::Integer ? static_cast<double>(m_integer) : m_double;
}

std::string Dom::asString(std::string const& fallback) const {
    Promise(fallback.empty(), "the fallback is empty");
    return GetKind() == Kind::String ? m_string : fallback;
}

Dom::Members const& Dom::objects() const {
    Promise(m_isObjectKnown, "isObject comes before objects");
    return m_children;
}

/// A fresh child behind all others. The one that was the last moves away, to show who still refers to it.
Dom& Dom::Add(std::string const& key) {
    static Members gone;
    if (!m_children.empty()) {
        auto const last = std::prev(m_children.end());
        auto const moved = m_children.emplace(last);
        moved->first = last->first;
        moved->second = std::move(last->second);
        gone.splice(gone.end(), m_children, last);
    }
    m_children.emplace_back();
    m_children.back().first = key;
    return m_children.back().second;
}

Dom& Dom::operator[](char const* key) {
    return (*this)[std::string(key)];
}

Dom& Dom::operator[](std::string const& key) {
    if (GetKind() == Kind::Fresh)
        m_kind = Kind::Object;
    Promise(m_kind == Kind::Object, "a member is added to an object or to a fresh node");
    auto const* found = Find(key);
    return found ? const_cast<Dom&>(*found) : Add(key);
}

Dom& Dom::append() {
    if (GetKind() == Kind::Fresh)
        m_kind = Kind::Array;
    Promise(m_kind == Kind::Array, "an element is added to an array or to a fresh node");
    return Add({});
}

Dom& Dom::toArray() {
    Promise(GetKind() == Kind::Fresh, "what is made an array is fresh");
    m_kind = Kind::Array;
    return *this;
}

Dom& Dom::toObject() {
    Promise(GetKind() == Kind::Fresh, "what is made an object is fresh");
    m_kind = Kind::Object;
    return *this;
}

} // namespace qel
