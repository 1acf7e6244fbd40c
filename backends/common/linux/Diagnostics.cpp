#include "Diagnostics.h"

#include <csignal>
#include <ctime>

#include <pthread.h>

namespace ZOL::Backends {

namespace {

sigset_t signalSet(bool pipe, bool fileSize) {
    sigset_t set;
    sigemptyset(&set);
    if (pipe) {
        sigaddset(&set, SIGPIPE);
    }
    if (fileSize) {
        sigaddset(&set, SIGXFSZ);
    }
    return set;
}

} // namespace

ScopedSignalBlock::ScopedSignalBlock() noexcept {
    const sigset_t both = signalSet(true, true);
    sigset_t before;
    if (pthread_sigmask(SIG_BLOCK, &both, &before) == 0) {
        blockedPipe_ = sigismember(&before, SIGPIPE) == 0;
        blockedFileSize_ = sigismember(&before, SIGXFSZ) == 0;
    }
}

ScopedSignalBlock::~ScopedSignalBlock() {
    if (!blockedPipe_ && !blockedFileSize_) {
        return;
    }
    const sigset_t blocked = signalSet(blockedPipe_, blockedFileSize_);
    const timespec noWait{};
    while (sigtimedwait(&blocked, nullptr, &noWait) > 0) {
        // Discard what is pending: unblocking would deliver it.
    }
    pthread_sigmask(SIG_UNBLOCK, &blocked, nullptr);
}

} // namespace ZOL::Backends
