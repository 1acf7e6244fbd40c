#include <csignal>
#include <cstdint>

#include <pthread.h>
#include <sys/mman.h>

#include "live/CrashHandler.h"
#include "live/GuardedText.h"

namespace backendcheck {

namespace {

CheckRecord* crashRecord = nullptr;
const char* stackBegin = nullptr;
const char* stackEnd = nullptr;

constexpr std::size_t handlerStack = 65536;
constexpr std::ptrdiff_t belowStack = 1 << 20;

bool isWrite(const ucontext_t* context) {
    constexpr greg_t writeBit = 2; // of the processor's page-fault code
    return (context->uc_mcontext.gregs[REG_ERR] & writeBit) != 0;
}

void onCrash(int signal, siginfo_t* info, void* context) {
    const auto* const address = static_cast<const char*>(info->si_addr);
    if (const char* const fault = faultAt(address, isWrite(static_cast<ucontext_t*>(context)))) {
        crashRecord->crashed(fault);
    } else if (address >= stackBegin - belowStack && address < stackEnd) {
        crashRecord->crashed(stackOverflow);
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

} // namespace

void installCrashHandlers(CheckRecord& record) {
    crashRecord = &record;
    pthread_attr_t attributes;
    pthread_getattr_np(pthread_self(), &attributes);
    void* stack = nullptr;
    std::size_t size = 0;
    pthread_attr_getstack(&attributes, &stack, &size);
    pthread_attr_destroy(&attributes);
    stackBegin = static_cast<const char*>(stack);
    stackEnd = stackBegin + size;

    static char* const own = new char[handlerStack];
    stack_t alternative = {};
    alternative.ss_sp = own;
    alternative.ss_size = handlerStack;
    sigaltstack(&alternative, nullptr);

    struct sigaction action = {};
    action.sa_sigaction = &onCrash;
    action.sa_flags = SA_SIGINFO | SA_ONSTACK;
    sigaction(SIGSEGV, &action, nullptr);
    sigaction(SIGBUS, &action, nullptr);
}

} // namespace backendcheck
