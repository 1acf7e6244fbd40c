#pragma once

#include "ZOL/Platform/Clock.h"
#include "ZOL/Platform/RandomGenerator.h"

namespace ZOL::Framework {

/// Seeds the generator of the loading thread, the only one that is ever seeded.
class RandomSeeder {
public:
    RandomSeeder() { Platform::seedRandomGenerator(Platform::currentMillisecond()); }
};

} // namespace ZOL::Framework
