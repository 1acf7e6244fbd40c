#pragma once

#include <ostream>

#include "host/Options.h"
#include "host/Run.h"

namespace Demo {

void printSummary(std::ostream& out, const Options& options, const RunReport& report);

} // namespace Demo
