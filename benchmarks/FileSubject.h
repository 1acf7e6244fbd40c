#pragma once

#include <cstddef>

#include "Ticks.h"

/// What the product, its floor and the peers have in common when they write lines into a file. All
/// write the same line, which scripts/bench.sh counts:
///
///     2026-01-31 09:05:07.123 INFO [benchmarks] the quick brown fox jumps over the dog..
namespace benchmarks {

inline constexpr char fileLogger[] = "benchmarks";

/// The size at which the files rotate: more than a run writes.
inline constexpr long fileRotationBytes = 1L << 30;

/// How a subject logs. The functions stay valid until the process ends.
struct FileSubject {
    /// Opens the file. If it is flushed, the system has each line when its statement ends.
    void (*open)(const char* path, bool isFlushed);

    /// Logs that many lines, and stores how long each statement took. Every thread calls it.
    void (*log)(std::size_t lines, Ticks* ticks);

    /// Closes the file, if the subject can before its process ends.
    void (*close)();
};

/// A subject's log function. The constructor of the class does what a thread does once, such as
/// finding its logger; its member function logText logs fortyCharacters.
template <typename Subject>
void logTimed(std::size_t lines, Ticks* ticks) {
    Subject subject;
    Ticks last = readTicks();
    for (std::size_t i = 0; i < lines; ++i) {
        subject.logText();
        const Ticks now = readTicks();
        ticks[i] = now - last;
        last = now;
    }
}

} // namespace benchmarks
