#include "LevelName.h"

#include <charconv>
#include <iterator>

#include <spdlog/fmt/fmt.h>

#include "SameText.h"

namespace ZOL::Backends {

using namespace Framework::GenericLogger;

namespace {

constexpr const char* noLevel = "NONE";

struct NamedLevel {
    const char* name;
    LoggingLevel level;
    spdlog::level::level_enum sinkLevel;
};

constexpr NamedLevel namedLevels[] = {
    {"FATAL", LOG_LEVEL_FATAL, spdlog::level::critical},
    {"ERROR", LOG_LEVEL_ERROR, spdlog::level::err},
    {"WARNING", LOG_LEVEL_WARNING, spdlog::level::warn},
    {"INFO", LOG_LEVEL_INFO, spdlog::level::info},
    {"DEBUG", LOG_LEVEL_DEBUG, spdlog::level::debug},
    {"TRACE", LOG_LEVEL_TRACE, spdlog::level::trace},
};

/// The named level at or below this one; what lies below all of them counts as the lowest.
const NamedLevel& namedLevelOf(LoggingLevel level) {
    const NamedLevel* named = std::begin(namedLevels);
    while (named->level > level && std::next(named) != std::end(namedLevels)) {
        ++named;
    }
    return *named;
}

} // namespace

std::string levelName(LoggingLevel level) {
    if (level == LOG_LEVEL_NONE) {
        return noLevel;
    }
    const NamedLevel& named = namedLevelOf(level);
    // In 64 bits: the distance from one end of the levels to the other does not fit an int.
    const long long distance = static_cast<long long>(level) - named.level;
    return distance == 0 ? named.name : fmt::format("{}{:+d}", named.name, distance);
}

std::optional<LoggingLevel> levelOf(std::string_view text) {
    if (sameText(text, noLevel)) {
        return LOG_LEVEL_NONE;
    }
    for (const NamedLevel& named : namedLevels) {
        if (sameText(text, named.name)) {
            return named.level;
        }
    }
    int number = 0;
    const char* const end = text.data() + text.size();
    const auto [rest, error] = std::from_chars(text.data(), end, number);
    if (error != std::errc() || rest != end) {
        return std::nullopt;
    }
    return static_cast<LoggingLevel>(number);
}

spdlog::level::level_enum sinkLevel(LoggingLevel level) {
    return namedLevelOf(level).sinkLevel;
}

} // namespace ZOL::Backends
