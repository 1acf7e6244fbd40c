#pragma once

#include <cstddef>
#include <string>
#include <thread>

#include "Row.h"

/// The workloads that peers perform too, and the texts that all subjects log. A workload of the
/// product alone stands beside its rows.
namespace benchmarks {

inline constexpr Workload plainText = {"plain text, one thread", 1000};
inline constexpr Workload plainTextTwoThreads = {"plain text, two threads", 200000};
inline constexpr Workload typedLine = {"text, int, double, string", 1000};
inline constexpr Workload levelAsked = {"level that is off, asked", 10000};
inline constexpr Workload levelOffLine = {"level that is off, a line", 10000};
inline constexpr Workload shortNames = {"logger by name of 11, among 1000", 1000};
inline constexpr Workload longNames = {"logger by name of 33, among 1000", 1000};

inline constexpr char fortyCharacters[] = "the quick brown fox jumps over the dog..";
static_assert(sizeof(fortyCharacters) == 40 + 1, "must have forty characters");

// A typed line has four parts: this text, the number of the line, and the next two. Six digits show
// the double in full, so that every library writes the same text for it.
inline constexpr char lineStart[] = "text ";
inline constexpr double lineNumber = 3.14159;

/// Hidden from the optimizer: its value is not known at compile time.
inline const std::string& lineWord() {
    static const std::string word = "twelve chars";
    return word;
}

/// Runs half of the operations on a second thread and the other half on this one, at the same time.
template <void (*run)(std::size_t)>
void onTwoThreads(std::size_t n) {
    std::thread other(run, n / 2);
    run(n - n / 2);
    other.join();
}

} // namespace benchmarks
