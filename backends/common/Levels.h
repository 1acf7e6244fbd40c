#pragma once

#include <optional>
#include <string>
#include <string_view>
#include <vector>

#include <spdlog/fwd.h>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Backends {

/// The text of a level: INFO for 30, INFO+5 for 35, NONE for 0.
std::string levelName(Framework::GenericLogger::LoggingLevel level);

/// Parses the name of a level, in any case, or an integer.
std::optional<Framework::GenericLogger::LoggingLevel> parseLevel(std::string_view text);

/// The closest spdlog level at or below this one. Sinks choose colours and priorities by it.
spdlog::level::level_enum sinkLevel(Framework::GenericLogger::LoggingLevel level);

/// A rule that a LevelFilter does not apply.
struct InvalidRule {
    std::string text;
    const char* expected;        ///< what the text should be
    std::string_view suggestion; ///< the level that was probably meant; may be empty
};

/// Decides by the name of a logger and the level of a message whether to write the message. Of all
/// rules whose prefix the logger's name starts with, the one with the longest prefix applies.
///
/// Immutable after construction: any number of threads may call its functions.
class LevelFilter {
public:
    /// No rules: every message is enabled.
    LevelFilter() = default;

    /// @param rules PREFIX=LEVEL, separated by semicolons; an empty prefix matches every logger.
    /// @param invalidRules receives the rules that are not applied.
    LevelFilter(std::string_view rules, std::vector<InvalidRule>& invalidRules);

    bool isEnabled(std::string_view logger, Framework::GenericLogger::LoggingLevel level) const {
        return level >= minLevel(logger);
    }

    /// The lowest level that is enabled for a logger. Above or below all levels if none or all are.
    long long minLevel(std::string_view logger) const noexcept;

private:
    struct Rule {
        std::string prefix;
        long long minLevel;
    };

    std::optional<InvalidRule> add(std::string_view rule);

    std::vector<Rule> rules_;
};

} // namespace ZOL::Backends
