#pragma once

#include <algorithm>
#include <cstddef>

/// \file
/// Room in a list whose growth is known beforehand.

namespace qel::Sectrix {

/// Makes room for `count` more entries, with a growth that keeps many small calls cheap.
template <class List>
void ReserveMore(List& list, std::size_t count) {
    if (list.capacity() - list.size() < count)
        list.reserve(std::max(list.size() + count, 2 * list.capacity()));
}

} // namespace qel::Sectrix
