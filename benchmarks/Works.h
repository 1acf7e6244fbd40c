#pragma once

#include "Row.h"

/// What peers do too. The works of the product alone stand beside their rows.
namespace benchmarks {

inline constexpr Work plainText = {"plain text, one thread", 1000};
inline constexpr Work plainTextTwoThreads = {"plain text, two threads", 200000};
inline constexpr Work typedLine = {"text, int, double, string", 1000};
inline constexpr Work levelAsked = {"level that is off, asked", 10000};
inline constexpr Work levelOffLine = {"level that is off, a line", 10000};
inline constexpr Work shortNames = {"logger by name of 11, among 1000", 1000};
inline constexpr Work longNames = {"logger by name of 33, among 1000", 1000};

} // namespace benchmarks
