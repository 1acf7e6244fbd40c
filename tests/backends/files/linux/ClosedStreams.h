#pragma once

#include <array>
#include <cstdio>

#include <fcntl.h>
#include <unistd.h>

/// Closes the standard streams for as long as it exists.
class ClosedStreams {
public:
    ClosedStreams() {
        std::fflush(nullptr);
        for (int stream = 0; stream <= STDERR_FILENO; ++stream) {
            saved_[static_cast<std::size_t>(stream)] =
                fcntl(stream, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
        }
        for (int stream = 0; stream <= STDERR_FILENO; ++stream) {
            close(stream);
        }
    }
    ClosedStreams(const ClosedStreams&) = delete;
    ClosedStreams& operator=(const ClosedStreams&) = delete;
    ~ClosedStreams() {
        for (int stream = 0; stream <= STDERR_FILENO; ++stream) {
            const int saved = saved_[static_cast<std::size_t>(stream)];
            dup2(saved, stream);
            close(saved);
        }
    }

private:
    std::array<int, STDERR_FILENO + 1> saved_ = {};
};
