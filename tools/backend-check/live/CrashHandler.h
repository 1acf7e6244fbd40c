#pragma once

#include <string>

#include "live/CheckRecord.h"

namespace backendcheck {

/// Has crashes of this process and calls of std::terminate recorded with what is known of the
/// reason. To be called once.
void handleCrashes(CheckRecord& record);

/// The record, for the handlers.
extern CheckRecord* crashRecord;

/// The handler of std::terminate, to see whether a plug-in has replaced it.
void onTerminate();

/// Recorded as the reason of a crash.
inline constexpr const char* stackOverflow = "stack overflow";

/// Type and text of the exception that is being handled.
std::string describeCurrentException();

} // namespace backendcheck
