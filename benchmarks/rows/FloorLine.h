#pragma once

#include "../far/FarSide.h"

namespace benchmarks {

/// Hands a text to the far side with a recursive lock held: the least that a logger has to do.
void deliverUnderLock(const char* text);

/// Where it arrives.
FarSide& floorFarSide();

} // namespace benchmarks
