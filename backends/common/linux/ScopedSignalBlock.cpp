#include "ScopedSignalBlock.h"

#include <csignal>
#include <ctime>

#include <pthread.h>
#include <sys/resource.h>
#include <sys/stat.h>

namespace ZOL::Backends {

namespace {

bool isAny(WriteSignals signals) {
    return signals.pipe || signals.fileSize;
}

WriteSignals intersection(WriteSignals signals, const sigset_t& set) {
    return {signals.pipe && sigismember(&set, SIGPIPE) == 1,
            signals.fileSize && sigismember(&set, SIGXFSZ) == 1};
}

WriteSignals difference(WriteSignals signals, WriteSignals without) {
    return {signals.pipe && !without.pipe, signals.fileSize && !without.fileSize};
}

sigset_t signalSet(WriteSignals signals) {
    sigset_t set;
    sigemptyset(&set);
    if (signals.pipe) {
        sigaddset(&set, SIGPIPE);
    }
    if (signals.fileSize) {
        sigaddset(&set, SIGXFSZ);
    }
    return set;
}

/// Discards at most one pending signal: of two, the second one was sent to the process by somebody
/// else, because the system delivers those of the thread first.
void discard(WriteSignals signal) {
    const sigset_t set = signalSet(signal);
    const timespec noWait{};
    sigtimedwait(&set, nullptr, &noWait);
}

} // namespace

WriteSignals signalsOf(int descriptor) noexcept {
    struct stat status = {};
    if (fstat(descriptor, &status) != 0) {
        return {};
    }
    return {S_ISFIFO(status.st_mode) || S_ISSOCK(status.st_mode),
            S_ISREG(status.st_mode) && isFileSizeLimited()};
}

bool isFileSizeLimited() noexcept {
    rlimit limit{};
    return getrlimit(RLIMIT_FSIZE, &limit) != 0 || limit.rlim_cur != RLIM_INFINITY;
}

ScopedSignalBlock::ScopedSignalBlock(WriteSignals signals) noexcept {
    if (!isAny(signals)) {
        return;
    }
    const sigset_t set = signalSet(signals);
    sigset_t before;
    if (pthread_sigmask(SIG_BLOCK, &set, &before) != 0) {
        return;
    }
    raised_ = signals;
    const WriteSignals blockedByHost = intersection(signals, before);
    unblock_ = difference(signals, blockedByHost);
    sigset_t pending;
    if (isAny(blockedByHost) && sigpending(&pending) == 0) {
        raised_ = difference(signals, intersection(blockedByHost, pending));
    }
}

ScopedSignalBlock::~ScopedSignalBlock() {
    if (writeFailed_ && raised_.pipe) {
        discard({true, false});
    }
    if (writeFailed_ && raised_.fileSize) {
        discard({false, true});
    }
    if (isAny(unblock_)) {
        const sigset_t set = signalSet(unblock_);
        pthread_sigmask(SIG_UNBLOCK, &set, nullptr);
    }
}

} // namespace ZOL::Backends
