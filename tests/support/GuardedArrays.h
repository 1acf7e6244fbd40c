#pragma once

#include <cstddef>

// A sanitizer needs the array alone. On Windows, these operators would not replace those of the C++
// library.
#if defined(ZOL_TEST_SANITIZED) || defined(_WIN32)
#define ZOL_TEST_GUARDED_ARRAYS 0
#else
#define ZOL_TEST_GUARDED_ARRAYS 1
#endif

/// Without a sanitizer, nothing reports a write past the end of an array. If
/// ZOL_TEST_GUARDED_ARRAYS is 1, this replaces operator new[] in the program that links it: guard
/// bytes follow each array and are checked when it is freed. If it is 0, all counts stay 0. For
/// programs with one thread.
namespace support::GuardedArrays {

/// How many arrays were written to past their end, of those that were freed.
std::size_t overflows();

/// How many arrays were ever allocated.
std::size_t allocations();

/// How many arrays are allocated now.
std::size_t allocated();

/// From now on, allocations of arrays fail or succeed.
void fail(bool fails);

} // namespace support::GuardedArrays
