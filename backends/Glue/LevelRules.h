#pragma once

#include <string>
#include <string_view>
#include <vector>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Backends {

/// From which level on the messages of a logger go out, by the longest prefix of its name.
class LevelRules {
public:
    /// Without rules, everything goes out.
    LevelRules() = default;

    /// @param rules PREFIX=LEVEL, separated by semicolons; a rule without a prefix is for all.
    /// @param refused takes the rules that are none.
    LevelRules(std::string_view rules, std::vector<std::string>& refused);

    /// Whether messages of that level of that logger go out.
    bool letOut(std::string_view logger, Framework::GenericLogger::LoggingLevel level) const;

private:
    struct Rule {
        std::string prefix;
        long long least;
    };

    bool add(std::string_view rule);

    std::vector<Rule> rules_;
};

} // namespace ZOL::Backends
