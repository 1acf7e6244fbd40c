#include "steps/HostSettings.h"

#include <cstring>

#include <windows.h>

namespace backendcheck {

namespace {

std::string openness(DWORD which) {
    HANDLE const handle = GetStdHandle(which);
    DWORD flags = 0;
    return handle != INVALID_HANDLE_VALUE && GetHandleInformation(handle, &flags) ? "open"
                                                                                  : "closed";
}

std::string environment() {
    std::string all;
    char* const block = GetEnvironmentStringsA();
    for (const char* variable = block; *variable != '\0'; variable += std::strlen(variable) + 1) {
        all += std::string(variable) + ' ';
    }
    FreeEnvironmentStringsA(block);
    return all;
}

} // namespace

void addPlatformSettings(std::vector<HostSetting>& traits) {
    traits.push_back({"standard input", openness(STD_INPUT_HANDLE), true});
    traits.push_back({"standard output", openness(STD_OUTPUT_HANDLE), true});
    traits.push_back({"standard error", openness(STD_ERROR_HANDLE), true});
    traits.push_back({"the error mode", std::to_string(GetErrorMode()), false});
    traits.push_back(
        {"the priority class", std::to_string(GetPriorityClass(GetCurrentProcess())), false});
    traits.push_back({"the environment", environment(), false});
}

} // namespace backendcheck
