#include "ZOL/Platform/RandomGenerator.h"

#include <cstdint>

namespace ZOL::Platform {

namespace {

thread_local std::uint32_t state = 1;

} // namespace

void seedRandomGenerator(unsigned int seed) {
    state = seed;
}

unsigned int drawRandomNumber() {
    state = state * 214013U + 2531011U;
    return (state >> 16) & 0x7FFFU;
}

} // namespace ZOL::Platform
