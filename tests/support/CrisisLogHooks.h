#pragma once

#include <cstddef>
#include <cstdio>
#include <functional>
#include <string>

/// Stands between the framework and the calls of the platform that the crisis log makes: sees them,
/// answers for the clock, and lets them fail. Natively the test program's own functions come before
/// those of the C library; on Windows the module's imports are redirected.
namespace support::CrisisLogHooks {

enum class Kind { Open, Clock, Write, Flush, Close };

struct Call {
    Kind kind;
    std::size_t size; // of a Write, as what follows
    std::size_t count;
    std::string text;
};

/// To be called once, before all else of here and before other threads run.
void attach();

/// The clock stands at that local time of day, and goes on by step milliseconds after each look.
void setTime(int hour, int minute, int second, int millisecond, int step = 0);

/// Is told of each call before it is made, on the thread that makes it; null for nobody.
void observe(std::function<void(const Call&)> observer);

/// From now on calls of that kind fail and have no effect, or work again. Not the clock.
void fail(Kind kind, bool fails);

/// What the system has of the file now, whatever still lies in buffers of this process; also while
/// the file is open.
std::string content();

// For the platforms' parts, which each call comes to.

bool fails(Kind kind);
void report(Kind kind);
void reportWrite(const void* data, std::size_t size, std::size_t count);

/// Looks at the clock that stands, if it does: milliseconds of the local day, else negative.
long standingTime();

} // namespace support::CrisisLogHooks
