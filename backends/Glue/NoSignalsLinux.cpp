#include "NoSignals.h"

#include <csignal>
#include <ctime>

#include <pthread.h>

namespace ZOL::Backends {

namespace {

sigset_t setOf(bool pipe, bool size) {
    sigset_t set;
    sigemptyset(&set);
    if (pipe) {
        sigaddset(&set, SIGPIPE);
    }
    if (size) {
        sigaddset(&set, SIGXFSZ);
    }
    return set;
}

} // namespace

NoSignals::NoSignals() noexcept {
    const sigset_t both = setOf(true, true);
    sigset_t before;
    if (pthread_sigmask(SIG_BLOCK, &both, &before) == 0) {
        heldPipe_ = sigismember(&before, SIGPIPE) == 0;
        heldSize_ = sigismember(&before, SIGXFSZ) == 0;
    }
}

NoSignals::~NoSignals() {
    if (!heldPipe_ && !heldSize_) {
        return;
    }
    const sigset_t held = setOf(heldPipe_, heldSize_);
    const timespec atOnce{};
    while (sigtimedwait(&held, nullptr, &atOnce) > 0) {
        // What came meanwhile is not to arrive now.
    }
    pthread_sigmask(SIG_UNBLOCK, &held, nullptr);
}

} // namespace ZOL::Backends
