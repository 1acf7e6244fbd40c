#include "HostState.h"

#include <cfenv>
#include <clocale>
#include <exception>
#include <filesystem>
#include <iostream>
#include <locale>

#include <xmmintrin.h>

#include "CrashWatch.h"

namespace backendcheck {

std::vector<HostTrait> hostState() {
    constexpr unsigned exceptionFlags = 0x3F; // what has happened, not how to calculate
    std::error_code error;
    std::vector<HostTrait> traits = {
        {"the C locale", std::setlocale(LC_ALL, nullptr), true},
        {"the C++ locale", std::locale().name(), true},
        {"the current folder", std::filesystem::current_path(error).string(), true},
        {"the rounding of floating-point numbers", std::to_string(std::fegetround()), true},
        {"the way floating-point numbers are calculated",
         std::to_string(_mm_getcsr() & ~exceptionFlags), true},
        {"the handler of std::terminate",
         std::get_terminate() == &reportTermination ? "the host's" : "another", false},
        {"the format of std::cout", std::to_string(static_cast<int>(std::cout.flags())), false},
    };
    addPlatformState(traits);
    return traits;
}

} // namespace backendcheck
