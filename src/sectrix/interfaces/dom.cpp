#include "sectrix/interfaces/dom.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qel {

namespace {

Dom const& SharedFreshNode() noexcept {
    static Dom const fresh;
    return fresh;
}

/// The last member with this key, or the end: of equal keys the later one counts.
template <class Members, class Key>
auto FindLast(Members& members, Key const& key) {
    auto const found =
        std::find_if(members.rbegin(), members.rend(), [&key](auto const& member) { return member.first == key; });
    return found == members.rend() ? members.end() : std::prev(found.base());
}

} // namespace

Dom::Dom() noexcept = default;
Dom::Dom(int value) noexcept : m_value(std::int64_t{value}) {}
Dom::Dom(std::int64_t value) noexcept : m_value(value) {}
Dom::Dom(double value) noexcept : m_value(value) {}
Dom::Dom(bool value) noexcept : m_value(value) {}
Dom::Dom(std::string const& value) : m_value(value) {}
Dom::Dom(char const* value) : m_value(std::string(value ? value : "")) {}

Dom::Dom(Dom const& other) {
    // The containers still to copy, instead of a recursion whose depth the document would choose. A target is sized
    // before its children are listed, so the addresses of these stay good.
    std::vector<std::pair<Dom const*, Dom*>> open{{&other, this}};
    auto const copy = [&open](Dom const& source, Dom& target) {
        if (source.IsChildless())
            target.m_value = source.m_value;
        else
            open.emplace_back(&source, &target);
    };
    while (!open.empty()) {
        auto const [source, target] = open.back();
        open.pop_back();
        if (auto const* elements = std::get_if<Elements>(&source->m_value)) {
            auto& copies = target->m_value.emplace<Elements>(elements->size());
            for (std::size_t i = 0; i < copies.size(); ++i)
                copy((*elements)[i], copies[i]);
        } else if (auto const* members = std::get_if<Members>(&source->m_value)) {
            auto& copies = target->m_value.emplace<Members>(members->size());
            for (std::size_t i = 0; i < copies.size(); ++i) {
                copies[i].first = (*members)[i].first;
                copy((*members)[i].second, copies[i].second);
            }
        } else {
            target->m_value = source->m_value;
        }
    }
}

Dom::Dom(Dom&& other) noexcept : m_value(std::exchange(other.m_value, std::monostate{})) {}

Dom& Dom::operator=(Dom const& other) {
    return *this = Dom(other);
}

Dom& Dom::operator=(Dom&& other) noexcept {
    // The old content goes last: `other` may stand within it.
    Dom taken(std::move(other));
    m_value.swap(taken.m_value);
    return *this;
}

Dom::~Dom() {
    if (!IsShallow())
        Dismantle();
}

/// Empties the node down the tree with the way back stored in the slots of the children on that way, so that
/// neither the stack nor the heap grows: `node` is the container being emptied, `parent` the one above it, and the
/// last slot of each container above holds the container above that.
void Dom::Dismantle() noexcept {
    Dom node(std::move(*this));
    Dom parent;
    for (;;) {
        Dom* child = node.LastChild();
        if (child && child->IsShallow()) {
            node.DropLastChild();
        } else if (child) {
            Dom next(std::move(*child));
            *child = std::move(parent);
            parent = std::move(node);
            node = std::move(next);
        } else if ((child = parent.LastChild())) {
            Dom grandparent(std::move(*child));
            node = std::move(parent);
            node.DropLastChild();
            parent = std::move(grandparent);
        } else {
            return;
        }
    }
}

bool Dom::IsShallow() const noexcept {
    if (auto const* elements = std::get_if<Elements>(&m_value))
        return std::all_of(elements->begin(), elements->end(),
                           [](Dom const& child) { return child.IsChildless(); });
    if (auto const* members = std::get_if<Members>(&m_value))
        return std::all_of(members->begin(), members->end(),
                           [](auto const& member) { return member.second.IsChildless(); });
    return true;
}

bool Dom::IsChildless() const noexcept {
    if (auto const* elements = std::get_if<Elements>(&m_value))
        return elements->empty();
    auto const* members = std::get_if<Members>(&m_value);
    return !members || members->empty();
}

Dom* Dom::LastChild() noexcept {
    if (auto* elements = std::get_if<Elements>(&m_value))
        return elements->empty() ? nullptr : &elements->back();
    if (auto* members = std::get_if<Members>(&m_value))
        return members->empty() ? nullptr : &members->back().second;
    return nullptr;
}

void Dom::DropLastChild() noexcept {
    if (auto* elements = std::get_if<Elements>(&m_value))
        elements->pop_back();
    else if (auto* members = std::get_if<Members>(&m_value))
        members->pop_back();
}

bool Dom::has(char const* key) const noexcept {
    auto const& members = objects();
    return FindLast(members, key) != members.end();
}

Dom const& Dom::operator[](char const* key) const noexcept {
    auto const& members = objects();
    auto const found = FindLast(members, key);
    return found == members.end() ? SharedFreshNode() : found->second;
}

Dom const& Dom::At(std::uint64_t index) const noexcept {
    return index < size() ? std::get<Elements>(m_value)[index] : SharedFreshNode();
}

std::uint64_t Dom::size() const noexcept {
    auto const* elements = std::get_if<Elements>(&m_value);
    return elements ? elements->size() : 0;
}

bool Dom::asBool(bool fallback) const noexcept {
    auto const* value = std::get_if<bool>(&m_value);
    return value ? *value : fallback;
}

std::int64_t Dom::asInt(std::int64_t fallback) const noexcept {
    if (auto const* value = std::get_if<std::int64_t>(&m_value))
        return *value;
    auto const* value = std::get_if<double>(&m_value);
    if (!value || std::isnan(*value))
        return fallback;
    double const limit = 9223372036854775808.0; // 2 to the power of 63
    if (*value >= limit)
        return std::numeric_limits<std::int64_t>::max();
    if (*value < -limit)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(*value);
}

double Dom::asDouble(double fallback) const noexcept {
    if (auto const* value = std::get_if<double>(&m_value))
        return *value;
    auto const* value = std::get_if<std::int64_t>(&m_value);
    return value ? static_cast<double>(*value) : fallback;
}

std::string Dom::asString(std::string const& fallback) const {
    auto const* value = std::get_if<std::string>(&m_value);
    return value ? *value : fallback;
}

Dom::Members const& Dom::objects() const noexcept {
    static Members const none;
    auto const* members = std::get_if<Members>(&m_value);
    return members ? *members : none;
}

Dom& Dom::operator[](std::string const& key) {
    if (!isObject())
        toObject();
    auto& members = std::get<Members>(m_value);
    auto const found = FindLast(members, key);
    return found == members.end() ? members.emplace_back(key, Dom()).second : found->second;
}

Dom& Dom::operator[](char const* key) {
    return (*this)[std::string(key)];
}

Dom& Dom::append() {
    if (!isArray())
        toArray();
    return std::get<Elements>(m_value).emplace_back();
}

Dom& Dom::toArray() noexcept {
    Dom array;
    array.m_value.emplace<Elements>();
    return *this = std::move(array);
}

Dom& Dom::toObject() noexcept {
    Dom object;
    object.m_value.emplace<Members>();
    return *this = std::move(object);
}

} // namespace qel
