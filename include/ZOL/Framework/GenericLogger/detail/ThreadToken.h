#pragma once

#include <cstdint>
#include <cstring>
#include <thread>
#include <type_traits>

// A register, where compiler and platform offer it. A call for the identifier takes as long as the
// rest of a suppressed statement.
#if defined(__ELF__) && defined(__has_builtin)
#if __has_builtin(__builtin_thread_pointer)
#define ZOL_DETAIL_THREAD_POINTER __builtin_thread_pointer
#endif
#endif

namespace ZOL::Framework::GenericLogger::detail {

/// Identifies a thread while it runs. Never 0.
using ThreadToken = std::uint64_t;

inline ThreadToken thisThread() {
#if defined(ZOL_DETAIL_THREAD_POINTER)
    return reinterpret_cast<ThreadToken>(ZOL_DETAIL_THREAD_POINTER());
#else
    const std::thread::id id = std::this_thread::get_id();
    static_assert(sizeof id <= sizeof(ThreadToken) && std::is_trivially_copyable_v<std::thread::id>,
                  "an atomic number must be able to hold the identifier of a thread");
    ThreadToken token = 0;
    std::memcpy(&token, &id, sizeof id);
    return token;
#endif
}

} // namespace ZOL::Framework::GenericLogger::detail
