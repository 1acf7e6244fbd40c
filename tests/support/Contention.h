#pragma once

#include <atomic>
#include <chrono>
#include <thread>

/// Two threads that want the same lock of the module, so that the lock gets its system resource
/// where it has none from the start.
namespace support::Contention {

inline std::atomic<bool> entered = false;
inline std::atomic<bool> leave = false;

/// To be called inside the module, with the lock held.
inline void waitInside() {
    entered = true;
    while (!leave) {
        std::this_thread::yield();
    }
}

/// Lets one thread wait for the lock for about that long while the other is in waitInside.
template <typename Holder, typename Waiter>
void make(Holder holder, Waiter waiter, std::chrono::milliseconds length) {
    entered = false;
    leave = false;
    std::thread first(holder);
    while (!entered) {
        std::this_thread::yield();
    }
    std::atomic<bool> there = false;
    std::thread second([&] {
        there = true;
        waiter();
    });
    while (!there) {
        std::this_thread::yield();
    }
    std::this_thread::sleep_for(length);
    leave = true;
    first.join();
    second.join();
}

} // namespace support::Contention
