#pragma once

namespace benchmarks {

/// The floor of every row that logs: passes a text to the baseline's sink, under a recursive lock.
/// It has a source of its own, so that it is not inlined.
void deliverUnderLock(const char* text);

} // namespace benchmarks
