#include "live/CrashHandler.h"

#include <cstdlib>
#include <exception>
#include <string>

#include "live/CurrentException.h"

namespace backendcheck {

namespace {

CheckRecord* crashRecord = nullptr;

} // namespace

void handleCrashes(CheckRecord& record) {
    crashRecord = &record;
    std::set_terminate(&onTerminate);
    installCrashHandlers(record);
}

void onTerminate() {
    if (std::current_exception() != nullptr) {
        crashRecord->lastWords(
            ("nobody caught " + thrownException() +
             ": it came out of a thread, a destructor or a function that is noexcept")
                .c_str());
    } else {
        crashRecord->lastWords("std::terminate was called: an object was used after its end, or a "
                               "std::thread was destroyed that was not joined");
    }
    std::abort();
}

} // namespace backendcheck
