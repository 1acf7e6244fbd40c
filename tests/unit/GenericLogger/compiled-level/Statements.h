#pragma once

#include <functional>

#include "ZOL/Framework/GenericLogger/Logger.h"

/// @param evaluated is increased by each evaluation of a statement that is not compiled.
void executeConstantLevels(ZOL::Framework::GenericLogger::Logger* logger, int& evaluated);

/// A statement whose level the compiler does not know.
void executeLevel(ZOL::Framework::GenericLogger::Logger* logger,
                  const std::function<ZOL::Framework::GenericLogger::LoggingLevel()>& level);

/// logger->trace("accessor").
void logWithAccessor(ZOL::Framework::GenericLogger::Logger* logger);
