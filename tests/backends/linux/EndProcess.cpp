#include "EndProcess.h"

#include <csignal>
#include <cstdlib>

#include <unistd.h>

void endProcess(const std::string& way) {
    constexpr int exitCode = 3;
    if (way == "exit") {
        std::exit(exitCode);
    } else if (way == "quickExit") {
        std::quick_exit(exitCode);
    } else if (way == "_exit") {
        _exit(exitCode);
    } else if (way == "abort") {
        std::abort();
    } else if (way == "kill") {
        kill(getpid(), SIGKILL);
    }
}

const ProcessEnds& processEnds() {
    static const ProcessEnds ends{
        {"return", "exit", "exitOfThread"}, {"quickExit", "_exit", "abort", "kill"}, 0};
    return ends;
}
