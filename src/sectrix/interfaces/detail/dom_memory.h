#pragma once

#include "sectrix/interfaces/dom.h"

#include <atomic>
#include <cstddef>

/// \file
/// The memory of document trees.

namespace qel {

/// Memory for the blocks of a tree that is read from text, taken from the heap in chunks.
///
/// A chunk goes with the last of its blocks, so that a node that is moved out of its tree may outlive it, on
/// whatever thread, and holds little more than its own. A large block stands by itself.
class Dom::Memory {
public:
    Memory() = default;
    Memory(Memory const&) = delete;
    Memory& operator=(Memory const&) = delete;
    ~Memory() { Drop(m_chunk, kGreatest - m_blocks); }

    /// A block of this kind, with nothing in it yet, and room for `bytes` behind it.
    /// \param memory  where it is to stand; null for a place by itself.
    /// \throws std::bad_alloc
    template <class Type>
    static Type* Make(Kind kind, std::size_t bytes, Memory* memory) {
        std::uint32_t offset = 0;
        void* const place =
            memory ? memory->Take(sizeof(Type) + bytes, offset) : ::operator new(sizeof(Type) + bytes);
        auto* const block = new (place) Type();
        block->m_offset = offset;
        block->m_kind = kind;
        return block;
    }

    struct alignas(Dom) Chunk {
        /// The number of blocks in it; too great by `kGreatest` while blocks are still added.
        std::atomic<std::uint32_t> m_blocks;
    };
    /// The chunk of a block; null when it stands by itself.
    static Chunk* ChunkOf(Block* block) noexcept {
        return block->m_offset ? reinterpret_cast<Chunk*>(reinterpret_cast<char*>(block) - block->m_offset)
                               : nullptr;
    }
    /// Takes so many blocks from the number of a chunk and frees it when none is left. Null does nothing.
    static void Drop(Chunk* chunk, std::uint32_t blocks) noexcept;

private:
    /// The size of a chunk, the first ones aside, in bytes.
    static constexpr std::uint32_t kGreatest = 65536;

    void* Take(std::size_t bytes, std::uint32_t& offset);

    /// The chunk that blocks are added to, its size, how much of it is taken, and by how many blocks.
    Chunk* m_chunk = nullptr;
    std::uint32_t m_size = 256;
    std::uint32_t m_taken = 256;
    std::uint32_t m_blocks = 0;
};

/// A block that holds one object.
template <class Content>
struct Dom::Boxed : Block {
    Content m_content;
};

} // namespace qel
