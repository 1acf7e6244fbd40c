#pragma once

#include <string_view>

#include "ZOL/Framework/GenericLogger/LoggingLevel.h"

namespace Demo {

/// How important a line is, by the most important word in it; LOG_LEVEL_TRACE if no word tells.
ZOL::Framework::GenericLogger::LoggingLevel levelOf(std::string_view line);

} // namespace Demo
