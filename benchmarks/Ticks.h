#pragma once

#include <chrono>
#include <cstdint>

#if defined(__x86_64__)
#include <x86intrin.h>
#endif

namespace benchmarks {

using Ticks = std::uint64_t;

/// The cheapest monotonic clock: the processor's time stamp counter, which runs at a constant rate
/// and alike on all cores. Under Wine, the system's clock is too coarse for a single statement.
inline Ticks readTicks() {
#if defined(__x86_64__)
    return __rdtsc();
#else
    return static_cast<Ticks>(std::chrono::steady_clock::now().time_since_epoch().count());
#endif
}

/// Finds the rate of the ticks between its construction and the call of nanosecondsPerTick.
class TickRate {
public:
    double nanosecondsPerTick() const {
        const std::chrono::duration<double, std::nano> passed = Clock::now() - clockStart_;
        return passed.count() / static_cast<double>(readTicks() - tickStart_);
    }

private:
    using Clock = std::chrono::steady_clock;

    Clock::time_point clockStart_ = Clock::now();
    Ticks tickStart_ = readTicks();
};

} // namespace benchmarks
