#pragma once

#include "ZOL/Platform/Clock.h"
#include "ZOL/Platform/RandomGenerator.h"

namespace ZOL::Framework {

/// Seeds the generator of the loading thread. No other generator is ever seeded.
class RandomSeeder {
public:
    RandomSeeder() { Platform::seedRandomGenerator(Platform::currentMillisecond()); }
};

} // namespace ZOL::Framework
