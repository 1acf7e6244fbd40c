#include "steps/HostSettings.h"

#include <cfenv>
#include <clocale>
#include <exception>
#include <filesystem>
#include <iostream>
#include <locale>

#include <xmmintrin.h>

#include "live/CrashHandler.h"

namespace backendcheck {

std::vector<HostSetting> hostSettings() {
    constexpr unsigned exceptionFlags = 0x3F; // what has happened, not how to calculate
    std::error_code error;
    std::vector<HostSetting> traits = {
        {"the C locale", std::setlocale(LC_ALL, nullptr), true},
        {"the C++ locale", std::locale().name(), true},
        {"the current folder", std::filesystem::current_path(error).string(), true},
        {"the rounding of floating-point numbers", std::to_string(std::fegetround()), true},
        {"the way floating-point numbers are calculated",
         std::to_string(_mm_getcsr() & ~exceptionFlags), true},
        {"the handler of std::terminate",
         std::get_terminate() == &onTerminate ? "the host's" : "another", false},
        {"the format of std::cout", std::to_string(static_cast<int>(std::cout.flags())), false},
    };
    addPlatformSettings(traits);
    return traits;
}

} // namespace backendcheck
