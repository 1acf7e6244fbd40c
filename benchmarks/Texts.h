#pragma once

#include <string>

/// What is logged: the same bytes by every subject.
namespace benchmarks {

inline constexpr char fortyCharacters[] = "the quick brown fox jumps over the dog..";
static_assert(sizeof(fortyCharacters) == 40 + 1, "as its name says");

// A line of four parts: this, the number of the line, and the next two. The number has the same
// text whether it is written with six digits or with as many as it takes.
inline constexpr char lineStart[] = "text ";
inline constexpr double lineNumber = 3.14159;

/// One object in each module, and nothing that a compiler could know at compile time.
inline const std::string& lineWord() {
    static const std::string word = "twelve chars";
    return word;
}

} // namespace benchmarks
