#include "ZOL/Platform/RandomGenerator.h"

#include <cstdint>

namespace ZOL::Platform {

namespace {

constexpr std::uint32_t initialState = 1;
constexpr std::uint32_t multiplier = 214013;
constexpr std::uint32_t increment = 2531011;
constexpr unsigned int discardedBits = 16;
constexpr std::uint32_t numberMask = 0x7FFF;

thread_local std::uint32_t state = initialState;

} // namespace

void seedRandomGenerator(unsigned int seed) {
    state = seed;
}

unsigned int drawRandomNumber() {
    state = state * multiplier + increment;
    return (state >> discardedBits) & numberMask;
}

} // namespace ZOL::Platform
