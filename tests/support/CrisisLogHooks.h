#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>

/// Hooks for the platform calls of the crisis log: observes them, sets the clock, and lets calls
/// fail. On Linux the test program interposes the functions of the C library; on Windows the
/// module's imports are redirected.
namespace support::CrisisLogHooks {

enum class Kind { Open, Clock, Write, Flush, Close };

struct Call {
    Kind kind;
    std::size_t size; // from here on only of a Write
    std::size_t count;
    std::string text;
};

/// Call once, before the other functions and before other threads run.
void attach();

/// Fixes the clock at that local time of day; each read advances it by step milliseconds.
void setTime(int hour, int minute, int second, int millisecond, int step = 0);

/// The observer is called before each call, on the thread that makes it; null for none.
void observe(std::function<void(const Call&)> observer);

/// From now on calls of that kind fail without effect, or work again. Not for Clock.
void fail(Kind kind, bool fails);

/// The content of the file without unflushed buffers, also while it is open.
std::string content();

// For the platforms' parts.

bool fails(Kind kind);
void report(Kind kind);
void reportWrite(const void* data, std::size_t size, std::size_t count);

/// Reads the fixed clock: milliseconds of the local day; negative if the clock is not fixed.
long fixedTime();

} // namespace support::CrisisLogHooks
