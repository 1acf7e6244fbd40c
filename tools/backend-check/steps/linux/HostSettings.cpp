#include "steps/HostSettings.h"

#include <array>
#include <csignal>
#include <cstdint>
#include <utility>

#include <fcntl.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

namespace backendcheck {

namespace {

std::string dispositionOf(int signal) {
    struct sigaction action = {};
    sigaction(signal, nullptr, &action);
    if ((action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_DFL) {
        return "the default";
    }
    if ((action.sa_flags & SA_SIGINFO) == 0 && action.sa_handler == SIG_IGN) {
        return "ignored";
    }
    return "a handler";
}

std::string openness(int file) {
    return fcntl(file, F_GETFD) != -1 ? "open" : "closed";
}

std::string environment() {
    std::string all;
    for (char** variable = environ; *variable != nullptr; ++variable) {
        all += std::string(*variable) + ' ';
    }
    return all;
}

} // namespace

void addPlatformSettings(std::vector<HostSetting>& traits) {
    constexpr std::array<std::pair<int, const char*>, 12> signals = {{{SIGPIPE, "SIGPIPE"},
                                                                      {SIGSEGV, "SIGSEGV"},
                                                                      {SIGBUS, "SIGBUS"},
                                                                      {SIGFPE, "SIGFPE"},
                                                                      {SIGILL, "SIGILL"},
                                                                      {SIGABRT, "SIGABRT"},
                                                                      {SIGINT, "SIGINT"},
                                                                      {SIGTERM, "SIGTERM"},
                                                                      {SIGHUP, "SIGHUP"},
                                                                      {SIGCHLD, "SIGCHLD"},
                                                                      {SIGUSR1, "SIGUSR1"},
                                                                      {SIGALRM, "SIGALRM"}}};
    for (const auto& [signal, name] : signals) {
        traits.push_back({std::string("the handling of ") + name, dispositionOf(signal), false});
    }
    traits.push_back({"standard input", openness(STDIN_FILENO), true});
    traits.push_back({"standard output", openness(STDOUT_FILENO), true});
    traits.push_back({"standard error", openness(STDERR_FILENO), true});
    const mode_t mask = umask(0);
    umask(mask);
    traits.push_back({"the rights of new files (umask)", std::to_string(mask), false});
    traits.push_back({"the priority", std::to_string(getpriority(PRIO_PROCESS, 0)), false});
    traits.push_back({"the environment", environment(), false});
}

} // namespace backendcheck
