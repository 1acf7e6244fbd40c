#pragma once

#include <chrono>
#include <limits>
#include <optional>

namespace ZOL::Backends {

/// When lines that have been logged are handed to the system.
struct FlushSettings {
    /// At the latest after this time. Without it, before the statement ends.
    std::optional<std::chrono::milliseconds> interval;
    /// From this level up, before the statement ends, after all lines that wait. Above all levels
    /// by default.
    long long minLevel = std::numeric_limits<long long>::max();
};

} // namespace ZOL::Backends
