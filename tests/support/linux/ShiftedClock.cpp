// Defines clock_gettime in the program, which all modules of the process then call instead of the C
// library's.

#include "ShiftedClock.h"

#include <atomic>
#include <ctime>

#include <dlfcn.h>

namespace support {

namespace {

std::atomic<int> shiftedHours = 0;

} // namespace

void shiftClock(int hours) {
    shiftedHours += hours;
}

} // namespace support

extern "C" [[gnu::visibility("default")]] int clock_gettime(clockid_t id, timespec* tp) noexcept {
    using Function = int(clockid_t, timespec*);
    static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "clock_gettime"));
    const int result = next(id, tp);
    if (id == CLOCK_REALTIME) {
        tp->tv_sec += static_cast<std::time_t>(support::shiftedHours) * 60 * 60;
    }
    return result;
}
