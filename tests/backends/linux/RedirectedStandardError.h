#pragma once

#include <unistd.h>

/// Redirects standard error to another descriptor during its lifetime.
class RedirectedStandardError {
public:
    explicit RedirectedStandardError(int descriptor) : saved_(dup(STDERR_FILENO)) {
        dup2(descriptor, STDERR_FILENO);
    }
    RedirectedStandardError(const RedirectedStandardError&) = delete;
    RedirectedStandardError& operator=(const RedirectedStandardError&) = delete;
    ~RedirectedStandardError() {
        dup2(saved_, STDERR_FILENO);
        close(saved_);
    }

private:
    int saved_;
};
