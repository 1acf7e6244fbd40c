#pragma once

#include <optional>
#include <string>
#include <string_view>

#include <spdlog/common.h>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Backends {

/// INFO for 30, INFO+5 for 35, NONE for 0.
std::string levelName(Framework::GenericLogger::LoggingLevel level);

/// The level of a name in either case, or of a whole number.
std::optional<Framework::GenericLogger::LoggingLevel> levelOf(std::string_view text);

/// The sinks' own level nearest at or below this one: it chooses colours and priorities.
spdlog::level::level_enum sinkLevel(Framework::GenericLogger::LoggingLevel level);

} // namespace ZOL::Backends
