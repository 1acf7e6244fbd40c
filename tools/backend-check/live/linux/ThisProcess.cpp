#include "live/ThisProcess.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <cstdio>
#include <cstdlib>
#include <cstring>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <new>
#include <utility>

#include <fcntl.h>
#include <pthread.h>
#include <sys/mman.h>
#include <sys/prctl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "live/CrashHandler.h"
#include "live/GuardedText.h"
#include "live/Heap.h"

namespace backendcheck {

namespace {

void limit(decltype(RLIMIT_AS) resource, rlim_t max) {
    const rlimit limits = {max, max};
    setrlimit(resource, &limits);
}

std::size_t entriesOf(const char* folder) {
    std::error_code error;
    const std::filesystem::directory_iterator entries(folder, error);
    return static_cast<std::size_t>(std::distance(begin(entries), end(entries)));
}

std::string nameOf(int signal) {
    const char* const name = sigabbrev_np(signal);
    return name != nullptr ? std::string("SIG") + name : "signal " + std::to_string(signal);
}

template <typename Value>
std::string bytesOf(const Value& value) {
    return {reinterpret_cast<const char*>(&value), sizeof(value)};
}

HostSetting handlerOf(int signal) {
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    const bool hasHandler = (action.sa_flags & SA_SIGINFO) != 0 ||
                            (action.sa_handler != SIG_DFL && action.sa_handler != SIG_IGN);
    const char* const value = hasHandler                     ? "a handler"
                              : action.sa_handler == SIG_IGN ? "ignored"
                                                             : "the default";
    return {"the handling of " + nameOf(signal), value, true,
            hasHandler ? bytesOf(action.sa_sigaction) : std::string(), "signal handlers"};
}

HostSetting blockedSignals() {
    sigset_t blocked;
    pthread_sigmask(SIG_SETMASK, nullptr, &blocked);
    std::string names;
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        if (sigismember(&blocked, signal) == 1) {
            names += (names.empty() ? "" : ", ") + nameOf(signal);
        }
    }
    return {"the blocked signals of its caller's thread",
            names.empty() ? "none" : names,
            true,
            {},
            "blocked signals"};
}

HostSetting streamOf(int descriptor, const char* name) {
    struct stat status = {};
    const bool isOpen = fstat(descriptor, &status) == 0;
    return {std::string("the file of ") + name, isOpen ? "open" : "closed", true,
            bytesOf(status.st_dev) + bytesOf(status.st_ino), "standard streams"};
}

std::string octal(mode_t number) {
    std::array<char, 16> text{};
    std::snprintf(text.data(), text.size(), "%03o", number);
    return text.data();
}

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
    } else if (const char* const freedFault = faultOfFreedBlock(address)) {
        crashRecord->crashed(freedFault);
    } else if (address >= stackBegin - belowStack && address < stackEnd) {
        crashRecord->crashed(stackOverflow);
    }
    std::signal(signal, SIG_DFL);
    std::raise(signal);
}

} // namespace

void limitThisProcess() {
    constexpr rlim_t maxMemory = rlim_t{4} << 30U;
    constexpr rlim_t maxFileSize = rlim_t{1} << 30U;
    limit(RLIMIT_AS, maxMemory);
    limit(RLIMIT_FSIZE, maxFileSize);
    limit(RLIMIT_CORE, 0);
    prctl(PR_SET_PDEATHSIG, SIGKILL);
}

void installCrashHandlers() {
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

void atProcessEnd(bool (*handler)()) {
    static bool (*called)() = handler;
    on_exit(
        [](int code, void*) {
            if (!called()) {
                std::fflush(nullptr);
                _exit(code);
            }
        },
        nullptr);
}

void afterDestructorsOf(const std::filesystem::path&, void (*)()) {}

void endNow(int code) {
    _exit(code);
}

std::size_t usedMemory() {
    std::ifstream statistics("/proc/self/statm");
    std::size_t size = 0;
    std::size_t resident = 0;
    statistics >> size >> resident;
    return resident * pageSize();
}

std::size_t openHandles() {
    const std::size_t count = entriesOf("/proc/self/fd");
    if (count != 0) {
        return count;
    }
    rlimit limits = {}; // no descriptor is left to open the folder with
    getrlimit(RLIMIT_NOFILE, &limits);
    return limits.rlim_cur;
}

std::size_t runningThreads() {
    return entriesOf("/proc/self/task");
}

std::vector<HostSetting> platformSettings() {
    std::vector<HostSetting> settings;
    for (int signal = 1; signal <= SIGRTMAX; ++signal) {
        settings.push_back(handlerOf(signal));
    }
    settings.push_back(blockedSignals());
    constexpr std::array streams = {"standard input", "standard output", "standard error"};
    for (std::size_t i = 0; i < streams.size(); ++i) {
        settings.push_back(streamOf(static_cast<int>(i), streams[i]));
    }
    const mode_t mask = umask(0);
    umask(mask);
    settings.push_back({"the umask", octal(mask)});
    settings.push_back({"the priority (nice)", std::to_string(getpriority(PRIO_PROCESS, 0))});
    std::string environment;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        environment += std::string(*variable) + ' ';
    }
    settings.push_back({"the environment", {}, false, environment});
    return settings;
}

std::size_t pageSize() {
    return static_cast<std::size_t>(sysconf(_SC_PAGESIZE));
}

char* newPages(std::size_t size) {
    void* const pages =
        mmap(nullptr, size, PROT_READ | PROT_WRITE, MAP_PRIVATE | MAP_ANONYMOUS, -1, 0);
    if (pages == MAP_FAILED) {
        throw std::bad_alloc();
    }
    return static_cast<char*>(pages);
}

void makeReadOnly(char* pages, std::size_t size) {
    mprotect(pages, size, PROT_READ);
}

void makeUnreadable(char* pages, std::size_t size) {
    madvise(pages, size, MADV_DONTNEED);
    mprotect(pages, size, PROT_NONE);
}

void reserveUnreadable(void* address, std::size_t size) {
    (void)mmap(address, size, PROT_NONE, MAP_PRIVATE | MAP_ANONYMOUS | MAP_FIXED_NOREPLACE, -1, 0);
}

} // namespace backendcheck
