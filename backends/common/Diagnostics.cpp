#include "Diagnostics.h"

#include <cstdio>

#include "Text.h"

namespace ZOL::Backends {

void reportToStderr(std::string_view backend, std::string_view text) noexcept {
    const ScopedSignalBlock signalBlock;
    try {
        // One call, so that output of other threads cannot split the line.
        const std::string line =
            "ZOL back end " + std::string(backend) + ": " + escapeControlCharacters(text) + "\n";
        std::fputs(line.c_str(), stderr);
        std::fflush(stderr);
    } catch (...) {
        // Out of memory: the report is discarded.
    }
}

void DropCounter::add(std::string_view reason) noexcept {
    if (++count_ > 1) {
        return;
    }
    try {
        reportToStderr(backend_, "messages are being lost: " + std::string(reason));
    } catch (...) {
        reportToStderr(backend_, "messages are being lost");
    }
}

void DropCounter::reset() noexcept {
    if (count_ == 0) {
        return;
    }
    try {
        reportToStderr(backend_, "works again, lost messages: " + std::to_string(count_));
    } catch (...) {
        reportToStderr(backend_, "works again");
    }
    count_ = 0;
}

void DropCounter::reportAtExit() const noexcept {
    if (count_ == 0) {
        return;
    }
    try {
        reportToStderr(backend_, "the process ends, lost messages: " + std::to_string(count_));
    } catch (...) {
        reportToStderr(backend_, "the process ends, and messages are lost");
    }
}

} // namespace ZOL::Backends
