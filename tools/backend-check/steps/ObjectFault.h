#pragma once

#include <string>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

namespace backendcheck {

// Whether a plug-in returned what it should. One source file per C++ ABI: itanium/ for g++ and
// clang++, msvc/ for Visual C++.

/// Why an object that a plug-in returned is not of that class, or an empty text. Crashes if there
/// is no object at that address, and belongs into a step of its own for that reason.
std::string objectFault(ZOL::Framework::GenericLogger::LoggerBackend* object);
std::string objectFault(ZOL::Framework::GenericLogger::LoggingChannel* object);

/// What is known of a back end without a fault.
extern const char* const goodBackend;

} // namespace backendcheck
