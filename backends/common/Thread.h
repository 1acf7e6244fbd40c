#pragma once

#include <chrono>
#include <cstdint>
#include <memory>
#include <optional>
#include <string>

namespace ZOL::Backends {

/// Starts a thread that blocks all signals and that nobody awaits. The module stays loaded for it.
/// False if there can be none.
bool startThread(void (*function)(void*), void* argument) noexcept;

/// Names the current thread for debuggers. Linux keeps the first 15 characters.
void nameThread(const std::string& name) noexcept;

/// Wakes one thread, at once if that waits already, else when it waits next. Its waits last as long
/// as they should when somebody sets the clock.
class WakeSignal {
public:
    /// Throws std::bad_alloc if the system has no means for it.
    WakeSignal();
    WakeSignal(const WakeSignal&) = delete;
    WakeSignal& operator=(const WakeSignal&) = delete;
    ~WakeSignal();

    void set() noexcept;

    /// Waits until the signal has been set, or for the time.
    void wait(std::optional<std::chrono::milliseconds> time) noexcept;

private:
    struct State;
    std::unique_ptr<State> state_;
};

} // namespace ZOL::Backends
