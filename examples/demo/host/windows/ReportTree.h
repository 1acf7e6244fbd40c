#pragma once

#include <string>

#include "ZOL/RegistryAccess/Registry.h"
#include "host/Options.h"
#include "host/Run.h"

namespace Demo {

// The values of the tree. Each key has the ones that it needs.
extern const char* const fileValue;    ///< text
extern const char* const linesValue;   ///< number
extern const char* const findingValue; ///< number

/// Writes what was read and found below the node: a sub key for each level and for each finding.
void fillFromReport(ZOL::RegistryAccess::Registry& node, const Options& options,
                    const RunReport& report);

} // namespace Demo
