#pragma once

namespace ZOL::Platform {

// The generator of the Windows C runtime: one 32-bit state s per thread, which is 1 in a new
// thread. Each number is (s >> 16) & 0x7FFF after s = s * 214013 + 2531011.

/// Sets the state of the calling thread's generator.
void seedRandomGenerator(unsigned int seed);

/// Returns the next number of the calling thread's generator, 0 to 32767.
unsigned int drawRandomNumber();

} // namespace ZOL::Platform
