// The module TwoModulesAuditor: checks that the times in a log never go backwards.

#include <cstring>
#include <string>
#include <string_view>

#include "Modules.h"
#include "ZOL/Framework/Management/MemoryManager.h"

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;
using namespace ZOL::Framework::GenericLogger;

namespace TwoModules {

namespace {

std::string latestTime;
int linesBackInTime = 0;

/// The time stamp at the start of the line, "2026-01-31 09:05:07"; empty if there is none.
std::string_view timeOf(std::string_view line) {
    const bool hasTime = line.size() >= 19 && line[4] == '-' && line[7] == '-' && line[13] == ':';
    return hasTime ? line.substr(0, 19) : "";
}

} // namespace

int checkLine(const char* line) {
    int messages = 0;
    const std::size_t number = position().line;
    if (number == 1) {
        message(auditorLogger, LOG_LEVEL_INFO) << "the audit starts";
        ++messages;
    }
    const std::string_view time = timeOf(line);
    if (time.empty()) {
        return messages;
    }
    if (time < latestTime) {
        message(auditorLogger, LOG_LEVEL_WARNING)
            << "line " << number << " is older than the line before it";
        ++messages;
        ++linesBackInTime;
    }
    latestTime = time;
    return messages;
}

char* auditResult() {
    const std::string text = std::to_string(position().line) + " lines, line end " +
                             readProperty(lineEndProperty) + ", " +
                             std::to_string(linesBackInTime) + " older than the line before";
    auto* const result = static_cast<char*>(MemoryManager::allocate(text.size() + 1));
    if (result != nullptr) {
        std::memcpy(result, text.c_str(), text.size() + 1);
    }
    return result;
}

View viewOfAuditor() {
    return viewOfThisModule();
}

} // namespace TwoModules
