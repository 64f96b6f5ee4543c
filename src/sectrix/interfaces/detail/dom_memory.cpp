#include "sectrix/interfaces/detail/dom_memory.h"

#include <algorithm>

namespace qel {

void* Dom::Memory::Take(std::size_t bytes, std::uint32_t& offset) {
    bytes = (bytes + alignof(Chunk) - 1) / alignof(Chunk) * alignof(Chunk);
    if (bytes > kGreatest / 8)
        return ::operator new(bytes);
    if (m_size - m_taken < bytes) {
        // Small documents get small chunks.
        auto const size =
            std::max(std::min(2 * m_size, kGreatest), static_cast<std::uint32_t>(sizeof(Chunk) + bytes));
        auto* const chunk = new (::operator new(size)) Chunk{{kGreatest}};
        Drop(std::exchange(m_chunk, chunk), kGreatest - std::exchange(m_blocks, 0));
        m_size = size;
        m_taken = sizeof(Chunk);
    }
    offset = m_taken;
    m_taken += static_cast<std::uint32_t>(bytes);
    ++m_blocks;
    return reinterpret_cast<char*>(m_chunk) + offset;
}

void Dom::Memory::Drop(Chunk* chunk, std::uint32_t blocks) noexcept {
    if (chunk && chunk->m_blocks.fetch_sub(blocks, std::memory_order_acq_rel) == blocks)
        ::operator delete(chunk);
}

} // namespace qel
