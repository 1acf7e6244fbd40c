#pragma once

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "../ByteCounter.h"

namespace benchmarks {

/// The floor of every row that logs: passes a text to a sink in another module, under a recursive
/// lock.
void deliverUnderLock(const char* text);

/// That sink's counter.
ByteCounter& floorCounter();

/// The logger of the rows that log. The first call installs the discarding back end.
ZOL::Framework::GenericLogger::Logger* productLogger();

/// That back end's counter.
ByteCounter& productCounter();

} // namespace benchmarks
