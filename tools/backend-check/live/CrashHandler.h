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

// One source file per C++ ABI: itanium/ for g++ and clang++, msvc/ for Visual C++.

/// The type of the exception that is being handled; empty if another runtime library threw it. For
/// Visual C++, only the names of classes that are derived from std::exception are known.
std::string typeOfCurrentException();

/// The runtime library writes to standard error in place of showing a dialog.
void suppressRuntimeDialogs();

} // namespace backendcheck
