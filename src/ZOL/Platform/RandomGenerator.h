#pragma once

namespace ZOL::Platform {

// The C runtime's generator: one 32-bit state per thread, 1 in a new thread,
// s = s * 214013 + 2531011, of which a draw gives (s >> 16) & 0x7FFF.

void seedRandomGenerator(unsigned int seed);

unsigned int drawRandomNumber();

} // namespace ZOL::Platform
