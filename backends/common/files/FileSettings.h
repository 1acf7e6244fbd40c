#pragma once

#include "Settings.h"
#include "files/RotatingLog.h"

namespace ZOL::Backends {

/// What the settings of a back end that writes to a log file say. The table has them for each.
RotatingLogSettings readFileSettings(const Settings& settings);

} // namespace ZOL::Backends
