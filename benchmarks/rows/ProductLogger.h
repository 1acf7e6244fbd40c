#pragma once

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "../far/FarSide.h"

namespace benchmarks {

/// The logger of the rows that log; the discarding back end is installed from the first call on.
ZOL::Framework::GenericLogger::Logger* productLogger();

/// Where that back end's texts end.
FarSide& productFarSide();

} // namespace benchmarks
