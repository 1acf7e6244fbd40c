// Check "host": settings of the whole process, which a plug-in must not change.

#include <cfenv>
#include <clocale>
#include <exception>
#include <filesystem>
#include <iostream>
#include <locale>
#include <string>
#include <vector>

#include <xmmintrin.h>

#include "live/CrashHandler.h"
#include "steps/Steps.h"

namespace backendcheck {

namespace {

const char* describeRounding(int rounding) {
    switch (rounding) {
    case FE_TONEAREST:
        return "to nearest";
    case FE_DOWNWARD:
        return "downward";
    case FE_UPWARD:
        return "upward";
    case FE_TOWARDZERO:
        return "toward zero";
    default:
        return "another";
    }
}

/// What the report calls a setting among those that have not changed.
std::string kindOf(const HostSetting& setting) {
    return *setting.group != '\0' ? setting.group : setting.name;
}

/// "a, b and c" of what was compared.
std::string listOfKinds(const std::vector<HostSetting>& settings) {
    std::vector<std::string> kinds;
    for (const HostSetting& setting : settings) {
        if (kinds.empty() || kinds.back() != kindOf(setting)) {
            kinds.push_back(kindOf(setting));
        }
    }
    std::string list;
    for (std::size_t i = 0; i < kinds.size(); ++i) {
        list += (i == 0 ? "" : i + 1 == kinds.size() ? " and " : ", ") + kinds[i];
    }
    return list;
}

std::string describeChange(const HostSetting& before, const HostSetting& after) {
    std::string text = "it changed " + before.name;
    if (before.value != after.value) {
        text += " from " + before.value + " to " + after.value;
    }
    return text;
}

} // namespace

std::vector<HostSetting> readHostSettings() {
    constexpr unsigned exceptionFlags = 0x3F; // results of calculations, not how they are done
    std::error_code error;
    std::vector<HostSetting> settings = platformSettings();
    settings.insert(
        settings.begin(),
        {{"the C locale", std::setlocale(LC_ALL, nullptr), true},
         {"the C++ locale", std::locale().name(), true},
         {"the current folder", std::filesystem::current_path(error).u8string(), true},
         {"the rounding of floating-point numbers", describeRounding(std::fegetround()), true},
         {"the exceptions and denormal numbers of floating-point calculations",
          {},
          true,
          std::to_string(_mm_getcsr() & ~exceptionFlags)},
         {"the handler of std::terminate",
          std::get_terminate() == &onTerminate ? "the host's" : "another"},
         {"the format of std::cout",
          {},
          false,
          std::to_string(static_cast<int>(std::cout.flags()))}});
    return settings;
}

void compareHostSettings(CheckSession& session, const std::vector<HostSetting>& before) {
    session.beginCheck("host");
    session.beginStep("looking at what it changed");
    const std::vector<HostSetting> after = readHostSettings();
    Result result = Result::Ok;
    std::string text;
    for (std::size_t i = 0; i < before.size(); ++i) {
        if (before[i].value == after[i].value && before[i].detail == after[i].detail) {
            continue;
        }
        text += describeChange(before[i], after[i]) + "\n";
        result = before[i].isFatal || result == Result::Wrong ? Result::Wrong : Result::Note;
    }
    session.report(result, result == Result::Ok ? "it did not change " + listOfKinds(before)
                                                : text + "that belongs to the host");
}

} // namespace backendcheck
