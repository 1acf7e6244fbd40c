#pragma once

#include "Options.h"

namespace benchmarks {

/// What makes one driver differ from another: measures, and writes its results. Main.cpp calls it.
void measureAll(const Options& options);

} // namespace benchmarks
