#pragma once

#include "Export.h"

namespace benchmarks {

/// The generator that the product has on this platform, behind a lock.
BENCHMARKS_FAR unsigned int lockedRandom();

} // namespace benchmarks
