#include "SignalCalls.h"

#include <atomic>
#include <csignal>
#include <ctime>

#include <dlfcn.h>

namespace SignalCalls {

namespace {

std::atomic<int> maskCount = 0;
std::atomic<int> pendingCount = 0;

/// The function of the C library that one of this file hides.
template <typename Function>
Function hidden(Function, const char* name) {
    return reinterpret_cast<Function>(dlsym(RTLD_NEXT, name));
}

} // namespace

int maskCalls() {
    return maskCount;
}

int pendingCalls() {
    return pendingCount;
}

void reset() {
    maskCount = 0;
    pendingCount = 0;
}

} // namespace SignalCalls

extern "C" [[gnu::visibility("default")]] int pthread_sigmask(int how, const sigset_t* newmask,
                                                              sigset_t* oldmask) noexcept {
    ++SignalCalls::maskCount;
    return SignalCalls::hidden(&pthread_sigmask, "pthread_sigmask")(how, newmask, oldmask);
}

extern "C" [[gnu::visibility("default")]] int sigpending(sigset_t* set) noexcept {
    ++SignalCalls::pendingCount;
    return SignalCalls::hidden(&sigpending, "sigpending")(set);
}

extern "C" [[gnu::visibility("default")]] int sigtimedwait(const sigset_t* set, siginfo_t* info,
                                                           const timespec* timeout) {
    ++SignalCalls::pendingCount;
    return SignalCalls::hidden(&sigtimedwait, "sigtimedwait")(set, info, timeout);
}
