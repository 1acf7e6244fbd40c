#include "Levels.h"

#include <charconv>
#include <iterator>
#include <limits>
#include <utility>

#include <spdlog/common.h>

#include "NearestWord.h"
#include "Text.h"

namespace ZOL::Backends {

using namespace Framework::GenericLogger;

namespace {

constexpr const char* noLevel = "NONE";
constexpr const char* off = "OFF";
constexpr const char* expectedRule = "PREFIX=LEVEL with a level such as INFO, 35 or OFF";
constexpr const char* expectedSeparator = "rules that are separated by semicolons";
constexpr long long aboveAllLevels = static_cast<long long>(std::numeric_limits<int>::max()) + 1;
constexpr long long belowAllLevels = std::numeric_limits<int>::min();

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

/// The closest named level at or below this one; TRACE for everything below TRACE.
const NamedLevel& namedLevelOf(LoggingLevel level) {
    const NamedLevel* named = std::begin(namedLevels);
    while (named->level > level && std::next(named) != std::end(namedLevels)) {
        ++named;
    }
    return *named;
}

/// The word for a level that was probably meant.
std::string_view nearestLevel(std::string_view text) {
    std::vector<std::string_view> words{noLevel, off};
    for (const NamedLevel& named : namedLevels) {
        words.emplace_back(named.name);
    }
    return nearestWord(text, words);
}

/// Whether a prefix consists of several rules that are not separated by semicolons. Such a rule
/// would match no logger, in silence.
bool hasOtherSeparator(std::string_view prefix) {
    const std::size_t sign = prefix.find('=');
    return sign != std::string_view::npos &&
           prefix.find_first_of(",| \t\r\n", sign) != std::string_view::npos;
}

} // namespace

std::string levelName(LoggingLevel level) {
    if (level == LOG_LEVEL_NONE) {
        return noLevel;
    }
    const NamedLevel& named = namedLevelOf(level);
    // In 64 bits: the difference of two levels may overflow an int.
    const long long difference = static_cast<long long>(level) - named.level;
    return difference == 0 ? named.name : fmt::format("{}{:+d}", named.name, difference);
}

std::optional<LoggingLevel> parseLevel(std::string_view text) {
    if (equalsIgnoreCase(text, noLevel)) {
        return LOG_LEVEL_NONE;
    }
    for (const NamedLevel& named : namedLevels) {
        if (equalsIgnoreCase(text, named.name)) {
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

LevelFilter::LevelFilter(std::string_view rules, std::vector<InvalidRule>& invalidRules) {
    while (!rules.empty()) {
        const std::size_t end = rules.find(';');
        const std::string_view rule = trim(rules.substr(0, end));
        rules.remove_prefix(end == std::string_view::npos ? rules.size() : end + 1);
        if (rule.empty()) {
            continue;
        }
        if (std::optional<InvalidRule> invalid = add(rule)) {
            invalidRules.push_back(*std::move(invalid));
        }
    }
}

std::optional<InvalidRule> LevelFilter::add(std::string_view rule) {
    const std::size_t sign = rule.rfind('='); // the name of a logger may contain '='
    if (sign == std::string_view::npos) {
        return InvalidRule{std::string(rule), expectedRule, {}};
    }
    const std::string_view prefix = trim(rule.substr(0, sign));
    if (hasOtherSeparator(prefix)) {
        return InvalidRule{std::string(rule), expectedSeparator, {}};
    }
    const std::string_view text = trim(rule.substr(sign + 1));
    const auto level = parseLevel(text);
    if (!level && !equalsIgnoreCase(text, off)) {
        return InvalidRule{std::string(rule), expectedRule, nearestLevel(text)};
    }
    const long long minLevel = level ? static_cast<long long>(*level) : aboveAllLevels;
    rules_.push_back({std::string(prefix), minLevel});
    return std::nullopt;
}

long long LevelFilter::minLevel(std::string_view logger) const noexcept {
    const Rule* longest = nullptr;
    for (const Rule& rule : rules_) {
        // The last of several rules with the same prefix applies.
        if (logger.compare(0, rule.prefix.size(), rule.prefix) == 0 &&
            (longest == nullptr || rule.prefix.size() >= longest->prefix.size())) {
            longest = &rule;
        }
    }
    return longest == nullptr ? belowAllLevels : longest->minLevel;
}

} // namespace ZOL::Backends
