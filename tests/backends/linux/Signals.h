#pragma once

#include <csignal>
#include <ctime>

/// Whether the current thread blocks a signal.
inline bool isBlocked(int signal) {
    sigset_t mask;
    pthread_sigmask(SIG_BLOCK, nullptr, &mask);
    return sigismember(&mask, signal) == 1;
}

/// Whether a signal is pending for the current thread or for the process.
inline bool isPending(int signal) {
    sigset_t pending;
    sigpending(&pending);
    return sigismember(&pending, signal) == 1;
}

/// Blocks a signal for the current thread during its lifetime, as a host may do. The destructor
/// discards it if it is pending.
class BlockedSignal {
public:
    explicit BlockedSignal(int signal) {
        sigemptyset(&set_);
        sigaddset(&set_, signal);
        pthread_sigmask(SIG_BLOCK, &set_, nullptr);
    }
    BlockedSignal(const BlockedSignal&) = delete;
    BlockedSignal& operator=(const BlockedSignal&) = delete;
    ~BlockedSignal() {
        while (take()) {
        }
        pthread_sigmask(SIG_UNBLOCK, &set_, nullptr);
    }

    /// Removes the signal once if it is pending. Returns whether it was.
    bool take() const {
        const timespec noWait{};
        return sigtimedwait(&set_, nullptr, &noWait) > 0;
    }

private:
    sigset_t set_{};
};
