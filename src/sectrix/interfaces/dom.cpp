#include "sectrix/interfaces/detail/dom_memory.h"

#include <algorithm>
#include <cmath>
#include <limits>

namespace qel {

namespace {

/// The last member with this key, or the end: of equal keys the later one counts.
template <class Members>
auto FindLast(Members& members, std::string_view key) {
    for (auto member = members.end(); member != members.begin();)
        if ((--member)->first == key)
            return member;
    return members.end();
}

} // namespace

Dom::Dom(std::string const& value) : Dom() {
    MakeString(value, nullptr);
}

Dom::Dom(char const* value) : Dom() {
    MakeString(value ? value : "", nullptr);
}

Dom::Dom(Dom const& other) : Dom() {
    // The containers still to copy, instead of a recursion whose depth the document would choose. There is room for
    // all children before the first is made, so their addresses stay good.
    std::vector<std::pair<Dom const*, Dom*>> open;
    auto const copy = [&open](Dom const& source, Dom& target) {
        if (source.isString()) {
            target.MakeString(source.Text(), nullptr);
        } else if (source.HasBlock()) {
            open.emplace_back(&source, &target);
        } else {
            target.m_value = source.m_value;
            target.m_kind = source.m_kind;
        }
    };
    copy(other, *this);
    while (!open.empty()) {
        auto const [source, target] = open.back();
        open.pop_back();
        if (source->isArray()) {
            auto& copies = target->MakeArray(source->size(), nullptr);
            for (auto const& element : source->List())
                copy(element, copies.Add());
        } else {
            auto& copies = target->MakeObject(nullptr);
            copies.reserve(source->objects().size());
            for (auto const& [key, value] : source->objects())
                copy(value, copies.emplace_back(key, Dom()).second);
        }
    }
}

Dom& Dom::operator=(Dom const& other) {
    return *this = Dom(other);
}

void Dom::MakeString(std::string_view text, Memory* memory) {
    auto* const block = Memory::Make<Boxed<std::string>>(Kind::String, 0, memory);
    m_value.m_block = block;
    m_kind = Kind::String; // from here on the block is freed with the node
    block->m_content = text;
}

Dom::Elements& Dom::MakeArray(std::uint64_t capacity, Memory* memory) {
    if (capacity > std::numeric_limits<std::size_t>::max() / sizeof(Dom) / 2) // whose size is no number
        throw std::bad_alloc();
    auto* const block =
        Memory::Make<Elements>(Kind::Array, static_cast<std::size_t>(capacity) * sizeof(Dom), memory);
    block->m_capacity = capacity;
    m_value.m_block = block;
    m_kind = Kind::Array;
    return *block;
}

Dom::Members& Dom::MakeObject(Memory* memory) {
    auto* const block = Memory::Make<Boxed<Members>>(Kind::Object, 0, memory);
    m_value.m_block = block;
    m_kind = Kind::Object;
    return block->m_content;
}

/// Frees a block and all below it. The depth of the recursion is not the document's: what lies deeper waits in a
/// list.
class Dom::Ending {
public:
    explicit Ending(Block* block) noexcept : m_waiting(block) {
        while (m_waiting)
            Free(std::exchange(m_waiting, m_waiting->m_next), 0);
        Memory::Drop(m_chunk, m_blocks);
    }

private:
    void Free(Block* block, int depth) noexcept {
        if (block->m_kind == Kind::Array) {
            for (auto& element : static_cast<Elements&>(*block))
                FreeBelow(element, depth);
        } else if (block->m_kind == Kind::Object) {
            auto& members = static_cast<Boxed<Members>&>(*block).m_content;
            for (auto& member : members)
                FreeBelow(member.second, depth);
            std::destroy_at(&members);
        } else {
            std::destroy_at(&static_cast<Boxed<std::string>&>(*block).m_content);
        }
        auto* const chunk = Memory::ChunkOf(block);
        if (!chunk)
            return ::operator delete(block);
        if (chunk != m_chunk)
            Memory::Drop(std::exchange(m_chunk, chunk), std::exchange(m_blocks, 0));
        ++m_blocks;
    }

    void FreeBelow(Dom& child, int depth) noexcept {
        int const greatestDepth = 16;
        if (!child.HasBlock())
            return;
        auto* const block = child.m_value.m_block;
        child.m_kind = Kind::Fresh;
        if (depth < greatestDepth)
            Free(block, depth + 1);
        else
            block->m_next = std::exchange(m_waiting, block);
    }

    Block* m_waiting;
    /// The chunk that the last block stood in, as a rule that of the next one too, and how many of its blocks are
    /// gone.
    Memory::Chunk* m_chunk = nullptr;
    std::uint32_t m_blocks = 0;
};

void Dom::Free() noexcept {
    m_value.m_block->m_next = nullptr;
    Ending(m_value.m_block);
}

Dom const& Dom::Missing() noexcept {
    static Dom const fresh;
    return fresh;
}

bool Dom::has(char const* key) const noexcept {
    auto const& members = objects();
    return FindLast(members, key) != members.end();
}

Dom const& Dom::operator[](char const* key) const noexcept {
    auto const& members = objects();
    auto const found = FindLast(members, key);
    return found == members.end() ? Missing() : found->second;
}

std::int64_t Dom::Truncated(std::int64_t fallback) const noexcept {
    if (!isDouble() || std::isnan(m_value.m_double))
        return fallback;
    double const limit = 9223372036854775808.0; // 2 to the power of 63
    if (m_value.m_double >= limit)
        return std::numeric_limits<std::int64_t>::max();
    if (m_value.m_double < -limit)
        return std::numeric_limits<std::int64_t>::min();
    return static_cast<std::int64_t>(m_value.m_double);
}

std::string const& Dom::Text() const noexcept {
    return static_cast<Boxed<std::string> const&>(*m_value.m_block).m_content;
}

std::string Dom::asString(std::string const& fallback) const {
    return isString() ? Text() : fallback;
}

Dom::Members const& Dom::objects() const noexcept {
    static Members const none;
    return isObject() && HasBlock() ? static_cast<Boxed<Members> const&>(*m_value.m_block).m_content : none;
}

Dom& Dom::operator[](std::string const& key) {
    if (!isObject())
        toObject();
    auto& members = HasBlock() ? static_cast<Boxed<Members>&>(*m_value.m_block).m_content : MakeObject(nullptr);
    auto const found = FindLast(members, key);
    return found == members.end() ? members.emplace_back(key, Dom()).second : found->second;
}

Dom& Dom::operator[](char const* key) {
    return (*this)[std::string(key)];
}

Dom& Dom::append() {
    if (!isArray())
        toArray();
    auto const count = size();
    if (!HasBlock() || count == List().m_capacity) {
        Dom larger;
        larger.MakeArray(std::max<std::uint64_t>(2 * count, 1), nullptr);
        for (std::uint64_t i = 0; i < count; ++i)
            larger.List().Add() = std::move(List().begin()[i]);
        *this = std::move(larger);
    }
    return List().Add();
}

Dom& Dom::toArray() noexcept {
    Dom array;
    array.m_kind = Kind::Array;
    return *this = std::move(array);
}

Dom& Dom::toObject() noexcept {
    Dom object;
    object.m_kind = Kind::Object;
    return *this = std::move(object);
}

} // namespace qel
