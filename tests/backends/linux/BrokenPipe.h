#pragma once

#include <stdexcept>

#include <unistd.h>

/// The write end of a pipe whose read end is closed.
class BrokenPipe {
public:
    BrokenPipe() {
        if (pipe(ends_) != 0) {
            throw std::runtime_error("cannot create a pipe");
        }
        close(ends_[0]);
    }
    BrokenPipe(const BrokenPipe&) = delete;
    BrokenPipe& operator=(const BrokenPipe&) = delete;
    ~BrokenPipe() { close(ends_[1]); }

    int descriptor() const { return ends_[1]; }

private:
    int ends_[2] = {};
};
