#pragma once

#include <cstdint>

// The address of a thread's own block is in a register, where compiler and platform offer it. A
// call for the identifier of the thread takes longer than the rest of a suppressed statement.
#if defined(_WIN32) && defined(__x86_64__) && defined(__GNUC__)
#define ZOL_DETAIL_THREAD_BLOCK_OF_WINDOWS
#elif defined(__ELF__) && defined(__has_builtin)
#if __has_builtin(__builtin_thread_pointer)
#define ZOL_DETAIL_THREAD_POINTER
#endif
#endif
#if !defined(ZOL_DETAIL_THREAD_BLOCK_OF_WINDOWS) && !defined(ZOL_DETAIL_THREAD_POINTER)
#include <cstring>
#include <thread>
#include <type_traits>
#endif

namespace ZOL::Framework::GenericLogger::detail {

/// Identifies a thread while it runs. Never 0.
using ThreadToken = std::uint64_t;

inline ThreadToken thisThread() {
#if defined(ZOL_DETAIL_THREAD_BLOCK_OF_WINDOWS)
    ThreadToken block = 0;
    __asm__("movq %%gs:0x30, %0" : "=r"(block)); // NtCurrentTeb, without <windows.h>
    return block;
#elif defined(ZOL_DETAIL_THREAD_POINTER)
    return reinterpret_cast<ThreadToken>(__builtin_thread_pointer());
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
