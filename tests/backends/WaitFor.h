#pragma once

#include <chrono>
#include <functional>
#include <thread>

/// Whether something that happens on another thread becomes true within ten seconds.
inline bool isSoon(const std::function<bool()>& condition) {
    for (const auto end = std::chrono::steady_clock::now() + std::chrono::seconds(10);
         !condition();) {
        if (std::chrono::steady_clock::now() > end) {
            return false;
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(1));
    }
    return true;
}
