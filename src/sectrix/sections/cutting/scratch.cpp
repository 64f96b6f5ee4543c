#include "sectrix/sections/cutting/scratch.h"

#include <algorithm>

namespace qel::Sectrix {

void Scratch::AddBlock(std::size_t least) {
    // By four, so that all blocks together are less than twice as large as the last. An allocator that gives memory
    // back to the system when much is free, as that of glibc from twice its largest block on, keeps it for the next
    // build then.
    std::size_t const size = std::max(least, 4 * m_lastSize);
    auto* const memory = static_cast<std::byte*>(::operator new(sizeof(Block) + size));
    m_blocks = ::new (static_cast<void*>(memory)) Block{m_blocks};
    m_free = memory + sizeof(Block);
    m_end = m_free + size;
    m_lastSize = size;
}

} // namespace qel::Sectrix
