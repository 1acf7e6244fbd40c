// The program's own clock_gettime comes before the C library's, for whatever it loads as well.

#include "FixedClock.h"

#include <atomic>
#include <ctime>

#include <dlfcn.h>

namespace support {

namespace {

constexpr long running = -1;
std::atomic<long> fixedNanosecond = running;

} // namespace

FixedClock::FixedClock(long nanosecond) {
    fixedNanosecond = nanosecond;
}

FixedClock::~FixedClock() {
    fixedNanosecond = running;
}

} // namespace support

extern "C" [[gnu::visibility("default")]] int clock_gettime(clockid_t id, timespec* tp) noexcept {
    using Function = int(clockid_t, timespec*);
    static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = next(id, tp);
    const long nanosecond = support::fixedNanosecond;
    if (id == CLOCK_REALTIME && nanosecond != support::running) {
        tp->tv_nsec = nanosecond;
    }
    return result;
}
