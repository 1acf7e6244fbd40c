#pragma once

#include <memory>
#include <string>
#include <string_view>
#include <vector>

#include <spdlog/common.h>
#include <spdlog/formatter.h>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace ZOL::Backends {

/// One message, as the flags of a pattern need it. All texts are escaped.
struct Record {
    Framework::GenericLogger::LoggingLevel level = Framework::GenericLogger::LOG_LEVEL_NONE;
    std::string_view logger;
    std::string_view line; ///< %v: "LEVEL [logger] text"
    std::string_view text; ///< %V: the part of the line that the host has logged
};

/// The letters of the flags that work in a pattern.
std::string_view knownFlags();

/// The flags of a pattern that do not work, as they are written there. A '%' at the end is one too.
std::vector<std::string> unknownFlags(std::string_view pattern);

/// Makes the formatter for a pattern. Unknown flags are written as they are.
/// @param record the message that is written; outlives the formatter.
std::unique_ptr<spdlog::formatter> makeFormatter(std::string_view pattern,
                                                 spdlog::pattern_time_type timeType,
                                                 const std::string& lineEnd, const Record& record);

} // namespace ZOL::Backends
