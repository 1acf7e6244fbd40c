#include "Process.h"

#include <atomic>
#include <cerrno> // program_invocation_short_name

#include <dlfcn.h>
#include <link.h>
#include <pthread.h>
#include <unistd.h>

#include "Text.h"

namespace ZOL::Backends {

namespace {

std::atomic<unsigned> forks = 0;

} // namespace

std::string programName() {
    return escapedWord(program_invocation_short_name);
}

unsigned long processId() {
    return static_cast<unsigned long>(getpid());
}

std::string hostName() {
    char name[256] = ""; // longer than the longest name, and with a zero at its end
    gethostname(name, sizeof(name) - 1);
    return escapedWord(name);
}

unsigned forkCount() noexcept {
    static const int registered = pthread_atfork(nullptr, nullptr, [] { ++forks; });
    static_cast<void>(registered);
    return forks;
}

bool areOtherThreadsGone() noexcept {
    return false;
}

void waitForKilledThreads() noexcept {}

bool keepModuleLoaded() noexcept {
    static const bool isKept = [] {
        Dl_info info = {};
        void* module = nullptr;
        if (dladdr1(&forks, &info, &module, RTLD_DL_LINKMAP) == 0) {
            return false;
        }
        const char* const name = static_cast<link_map*>(module)->l_name;
        const bool isProgram = *name == '\0';
        return isProgram || dlopen(name, RTLD_LAZY | RTLD_NOLOAD | RTLD_NODELETE) != nullptr;
    }();
    return isKept;
}

void callAtExit(void (*)()) noexcept {}

} // namespace ZOL::Backends
