#pragma once

#include <string_view>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace Demo {

struct NamedLevel {
    ZOL::Framework::GenericLogger::LoggingLevel level;
    const char* name;
};

// From the most important on.
inline constexpr NamedLevel namedLevels[] = {
    {ZOL::Framework::GenericLogger::LOG_LEVEL_FATAL, "fatal"},
    {ZOL::Framework::GenericLogger::LOG_LEVEL_ERROR, "error"},
    {ZOL::Framework::GenericLogger::LOG_LEVEL_WARNING, "warning"},
    {ZOL::Framework::GenericLogger::LOG_LEVEL_INFO, "info"},
    {ZOL::Framework::GenericLogger::LOG_LEVEL_DEBUG, "debug"},
    {ZOL::Framework::GenericLogger::LOG_LEVEL_TRACE, "trace"},
};

/// Throws std::runtime_error if there is no level of that name.
ZOL::Framework::GenericLogger::LoggingLevel levelNamed(std::string_view name);

} // namespace Demo
