// A module with the framework's own entry function that does use Boost.Thread's thread-local data,
// so that one can see whether Boost.Thread hears of ending threads.

#include <boost/thread/tss.hpp>

#include "ZOL/Framework/Export.h"

namespace {

void countCleanup(int* cleanups) {
    ++*cleanups;
}

} // namespace

/// At the end of the calling thread, *cleanups goes up by one.
extern "C" ZOL_BACKEND_EXPORT void watchThisThread(int* cleanups) {
    static auto* const watched = new boost::thread_specific_ptr<int>(countCleanup);
    watched->reset(cleanups);
}
