#pragma once

#include <cstddef>
#include <cstdint>
#include <new>
#include <vector>

/// \file
/// Memory for the working lists of one build.

namespace qel::Sectrix {

/// Memory that is handed out and never taken back before the end. The first of it stands on the stack, which is all
/// that most sections need, so that these allocate nothing but their results. The rest is a chain of blocks.
class Scratch {
public:
    /// Gives a list its memory. Elements that are made without a value are left unset where their type has no
    /// constructor.
    template <class T>
    struct Allocator {
        using value_type = T;

        Allocator(Scratch& scratch) : m_scratch(&scratch) {}
        template <class U>
        Allocator(Allocator<U> const& other) : m_scratch(other.m_scratch) {}

        T* allocate(std::size_t count) { return static_cast<T*>(m_scratch->Take(count * sizeof(T), alignof(T))); }
        void deallocate(T*, std::size_t) {}
        template <class U>
        void construct(U* place) {
            ::new (static_cast<void*>(place)) U;
        }
        bool operator==(Allocator const& other) const { return m_scratch == other.m_scratch; }
        bool operator!=(Allocator const& other) const { return m_scratch != other.m_scratch; }

        Scratch* m_scratch;
    };

    /// A list in such memory, made as `List<T>(scratch)`. One that is used again and again keeps what it has grown
    /// to.
    template <class T>
    using List = std::vector<T, Allocator<T>>;

    Scratch() = default;
    Scratch(Scratch const&) = delete;
    Scratch& operator=(Scratch const&) = delete;
    ~Scratch() {
        while (m_blocks) {
            auto* const next = m_blocks->m_next;
            ::operator delete(m_blocks);
            m_blocks = next;
        }
    }

private:
    struct alignas(std::max_align_t) Block {
        Block* m_next;
    };

    /// \param alignment  a power of two.
    void* Take(std::size_t size, std::size_t alignment) {
        for (;;) {
            auto const padding = (0 - reinterpret_cast<std::uintptr_t>(m_free)) & (alignment - 1);
            if (padding + size <= static_cast<std::size_t>(m_end - m_free)) {
                auto* const taken = m_free + padding;
                m_free = taken + size;
                return taken;
            }
            AddBlock(size + alignment);
        }
    }

    /// Goes on in a new block of at least so many bytes. What is free in the last one is lost.
    void AddBlock(std::size_t least);

    alignas(std::max_align_t) std::byte m_room[16384];
    std::byte* m_free = m_room;
    std::byte* m_end = m_room + sizeof m_room;
    Block* m_blocks = nullptr;
    std::size_t m_lastSize = sizeof m_room;
};

} // namespace qel::Sectrix
