#pragma once

#include <chrono>

namespace ZOL::Backends {

/// Bounds how long one logging statement waits for the network, also if it finds its connection
/// closed, connects again and sends there. Calls are serialised by the caller.
class StatementTimeout {
public:
    using Clock = std::chrono::steady_clock;

    explicit StatementTimeout(std::chrono::milliseconds timeout) : timeout_(timeout) {}

    /// The deadline of the statement under way. Begins a statement if none is under way.
    Clock::time_point deadline() {
        const Clock::time_point now = Clock::now();
        if (now >= deadline_) {
            deadline_ = now + timeout_;
        }
        return deadline_;
    }

    /// The message of the statement is sent: the next statement has a deadline of its own.
    void end() { deadline_ = Clock::time_point::min(); }

private:
    std::chrono::milliseconds timeout_;
    Clock::time_point deadline_ = Clock::time_point::min();
};

} // namespace ZOL::Backends
