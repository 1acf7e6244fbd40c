#include "EndProcess.h"

#include <cstdlib>

#include <windows.h>

void endProcess(const std::string& way) {
    constexpr int exitCode = 3;
    if (way == "exit") {
        std::exit(exitCode);
    } else if (way == "_exit") {
        _exit(exitCode);
    } else if (way == "ExitProcess") {
        ExitProcess(exitCode);
    } else if (way == "TerminateProcess") {
        TerminateProcess(GetCurrentProcess(), exitCode);
    }
}

const ProcessEnds& processEnds() {
    static const ProcessEnds ends{
        {"return", "exit", "exitOfThread", "_exit", "ExitProcess"}, {"TerminateProcess"}, 5};
    return ends;
}
