#pragma once

#include <cassert>
#include <cstddef>
#include <cstdint>

/// \file
/// The lowest bit of a word.

namespace qel::Sectrix {

/// Which bit is the lowest that is set in a word, which must not be zero.
inline std::size_t LowestBit(std::uint64_t word) {
    assert(word != 0);
#if defined(__GNUC__)
    return static_cast<std::size_t>(__builtin_ctzll(word));
#else
    std::size_t bit = 0;
    while (!(word >> bit & 1))
        ++bit;
    return bit;
#endif
}

} // namespace qel::Sectrix
