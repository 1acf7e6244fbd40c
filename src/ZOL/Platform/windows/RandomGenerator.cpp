#include "ZOL/Platform/RandomGenerator.h"

#include <cstdlib>

namespace ZOL::Platform {

void seedRandomGenerator(unsigned int seed) {
    std::srand(seed);
}

unsigned int drawRandomNumber() {
    return static_cast<unsigned int>(std::rand());
}

} // namespace ZOL::Platform
