#pragma once

#include "live/CheckRecord.h"

namespace backendcheck {

/// Has the record tell what is known of a crash of this process, and of a call of std::terminate.
/// Once in a process.
void handleCrashes(CheckRecord& record);

/// The platform's part of it: signals or exceptions.
void installCrashHandlers(CheckRecord& record);

/// The watch for std::terminate, to see whether a plug-in replaced it.
void onTerminate();

constexpr const char* stackOverflowWords = "stack overflow";

} // namespace backendcheck
