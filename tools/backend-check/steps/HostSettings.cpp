// Check "host": settings of the whole process, which a plug-in should leave alone.

#include <cfenv>
#include <clocale>
#include <exception>
#include <filesystem>
#include <iostream>
#include <locale>

#include <xmmintrin.h>

#include "live/CrashHandler.h"
#include "steps/Steps.h"

namespace backendcheck {

std::vector<HostSetting> readHostSettings() {
    constexpr unsigned exceptionFlags = 0x3F; // results of calculations, not how they are done
    std::error_code error;
    std::vector<HostSetting> settings = platformSettings();
    settings.insert(
        settings.begin(),
        {{"the C locale", std::setlocale(LC_ALL, nullptr), true},
         {"the C++ locale", std::locale().name(), true},
         {"the current folder", std::filesystem::current_path(error).string(), true},
         {"the rounding of floating-point numbers", std::to_string(std::fegetround()), true},
         {"the way floating-point numbers are calculated",
          std::to_string(_mm_getcsr() & ~exceptionFlags), true},
         {"the handler of std::terminate",
          std::get_terminate() == &onTerminate ? "the host's" : "another"},
         {"the format of std::cout", std::to_string(static_cast<int>(std::cout.flags()))}});
    return settings;
}

void compareHostSettings(CheckSession& session, const std::vector<HostSetting>& before) {
    session.beginCheck("host");
    session.beginStep("looking at what it changed");
    const std::vector<HostSetting> after = readHostSettings();
    Result result = Result::Ok;
    std::string text;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i].value == after[i].value) {
            continue;
        }
        text += (text.empty() ? "it changed " : "\nit changed ") + before[i].name;
        constexpr std::size_t maxLength = 60;
        if (before[i].value.size() + after[i].value.size() < maxLength) {
            text += " from " + before[i].value + " to " + after[i].value;
        }
        result = before[i].isFatal || result == Result::Wrong ? Result::Wrong : Result::Note;
    }
    session.report(result, result == Result::Ok
                               ? "it leaves locale, folder, streams, signals and the like alone"
                               : text + "\nthat belongs to the host");
}

} // namespace backendcheck
