#pragma once

#include <cstddef>
#include <pthread.h>
#include <stdexcept>
#include <vector>

/// \file
/// Threads with as little stack as a host's worker thread may have.

namespace fuzz {

#if defined(__SANITIZE_ADDRESS__) || defined(__SANITIZE_THREAD__)
inline constexpr bool kIsSanitized = true;
#elif defined(__has_feature)
inline constexpr bool kIsSanitized = __has_feature(address_sanitizer) || __has_feature(thread_sanitizer);
#else
inline constexpr bool kIsSanitized = false;
#endif

/// In bytes. Sanitizers make frames several times as large.
inline constexpr std::size_t kSmallStack = (kIsSanitized ? 1024 : 256) * 1024;

/// Calls `run` with 0 to `count` - 1, each on a thread of its own, all at once.
template <class Function>
void OnSmallStacks(std::size_t count, Function const& run) {
    struct Start {
        Function const* m_run;
        std::size_t m_number;
    };
    pthread_attr_t attributes;
    pthread_attr_init(&attributes);
    if (pthread_attr_setstacksize(&attributes, kSmallStack) != 0)
        throw std::runtime_error("no stack can be so small");
    std::vector<pthread_t> threads(count);
    std::vector<Start> starts(count);
    for (std::size_t i = 0; i < count; ++i) {
        starts[i] = {&run, i};
        auto const begin = [](void* start) -> void* {
            auto const& [function, number] = *static_cast<Start const*>(start);
            (*function)(number);
            return nullptr;
        };
        if (pthread_create(&threads[i], &attributes, begin, &starts[i]) != 0)
            throw std::runtime_error("no thread");
    }
    pthread_attr_destroy(&attributes);
    for (auto const thread : threads)
        pthread_join(thread, nullptr);
}

} // namespace fuzz
