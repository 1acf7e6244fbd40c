// Interposes clock_gettime: a definition in the program takes precedence over the C library's.

#include "TestClock.h"

#include <atomic>
#include <ctime>

#include <dlfcn.h>

namespace support::TestClock {

namespace {

constexpr long running = -1;
std::atomic<long> fixedNanosecond = running;
std::atomic<std::time_t> secondsAhead = 0;

} // namespace

void advance(int hours) {
    secondsAhead += static_cast<std::time_t>(hours) * 60 * 60;
}

void set(std::time_t time) {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    secondsAhead += time - now.tv_sec;
}

FixedNanosecond::FixedNanosecond(long nanosecond) {
    fixedNanosecond = nanosecond;
}

FixedNanosecond::~FixedNanosecond() {
    fixedNanosecond = running;
}

} // namespace support::TestClock

namespace TestClock = support::TestClock;

extern "C" [[gnu::visibility("default")]] int clock_gettime(clockid_t id, timespec* tp) noexcept {
    using Function = int(clockid_t, timespec*);
    static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = next(id, tp);
    if (id == CLOCK_REALTIME) {
        tp->tv_sec += TestClock::secondsAhead;
        const long nanosecond = TestClock::fixedNanosecond;
        if (nanosecond != TestClock::running) {
            tp->tv_nsec = nanosecond;
        }
    }
    return result;
}
