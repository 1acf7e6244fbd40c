#pragma once

#include <cstdint>
#include <cstring>
#include <thread>
#include <type_traits>

namespace ZOL::Framework::GenericLogger::detail {

/// Identifies a thread while it runs. Never 0.
using ThreadToken = std::uint64_t;

inline ThreadToken thisThread() {
    const std::thread::id id = std::this_thread::get_id();
    static_assert(sizeof id <= sizeof(ThreadToken) && std::is_trivially_copyable_v<std::thread::id>,
                  "an atomic number must be able to hold the identifier of a thread");
    ThreadToken token = 0;
    std::memcpy(&token, &id, sizeof id);
    return token;
}

} // namespace ZOL::Framework::GenericLogger::detail
