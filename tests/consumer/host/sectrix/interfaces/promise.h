#pragma once

#include <cstdio>
#include <cstdlib>

/// \file
/// How the host's libraries take the library at its word.

namespace host {

/// Ends the program where the library breaks a promise that it has given.
inline void Promise(bool isKept, char const* what) {
    if (isKept)
        return;
    std::fprintf(stderr, "the library breaks a promise: %s\n", what);
    std::abort();
}

} // namespace host
