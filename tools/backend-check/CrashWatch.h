#pragma once

#include "Journal.h"

namespace backendcheck {

/// Has the journal tell what is known of a crash of this process, and of a call of std::terminate.
/// Once in a process.
void watchForCrashes(Journal& journal);

/// The watch for std::terminate, to see whether a plug-in replaced it.
void reportTermination();

constexpr const char* stackOverflowWords = "stack overflow";

} // namespace backendcheck
