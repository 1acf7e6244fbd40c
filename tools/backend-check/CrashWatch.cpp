#include "CrashWatch.h"

#include <cstdlib>
#include <exception>
#include <string>

#include "CrashWatchPlatform.h"
#include "Thrown.h"

namespace backendcheck {

namespace {

Journal* crashJournal = nullptr;

} // namespace

void watchForCrashes(Journal& journal) {
    crashJournal = &journal;
    std::set_terminate(&reportTermination);
    catchCrashes(journal);
}

void reportTermination() {
    if (std::current_exception() != nullptr) {
        crashJournal->lastWords(
            ("nobody caught " + thrownException() +
             ": it came out of a thread, a destructor or a function that is noexcept")
                .c_str());
    } else {
        crashJournal->lastWords("std::terminate was called: an object was used after its end, or a "
                                "std::thread was destroyed that was not joined");
    }
    std::abort();
}

} // namespace backendcheck
