#pragma once

#include <cstddef>
#include <memory_resource>
#include <vector>

/// \file
/// Memory for the working lists of one build.

namespace qel::Sectrix {

/// Memory that is handed out and never taken back before the end. The first of it stands on the stack, which is all
/// that most sections need, so that these allocate nothing but their results.
class Scratch {
public:
    /// A list in such memory. One that is used again and again keeps what it has grown to.
    template <class T>
    using List = std::pmr::vector<T>;

    std::pmr::memory_resource* Resource() { return &m_resource; }

private:
    alignas(std::max_align_t) std::byte m_room[16384];
    std::pmr::monotonic_buffer_resource m_resource{m_room, sizeof m_room};
};

} // namespace qel::Sectrix
