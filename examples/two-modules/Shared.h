#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include "ZOL/Framework/GenericLogger/Logger.h"

/// What the host and both modules agree on. The code is built into each of them.
namespace TwoModules {

// Each module that asks the framework for one of these names gets the same object.
inline constexpr const char* readerLogger = "example.reader";
inline constexpr const char* auditorLogger = "example.auditor";
inline constexpr const char* messageCounter = "example.messages";
inline constexpr const char* alertCounter = "example.alerts";
inline constexpr const char* alertWordProperty = "example.alert word"; // set by the host
inline constexpr const char* lineEndProperty = "example.line end";     // set by the reader

/// Where the reader stands in the file: a named object, made by the first module that asks.
struct Position {
    std::size_t line = 0;
};
Position& position();

/// Starts a message and counts it, as an alert too if it is a warning or worse.
ZOL::Framework::GenericLogger::LogStream message(const char* logger,
                                                 ZOL::Framework::GenericLogger::LoggingLevel level);

// ASCII only.
void setProperty(const char* name, std::string_view value);
std::string readProperty(const char* name);

/// What one module, or the host, gets from the framework under the shared names.
struct View {
    const void* readerLogger;
    const void* auditorLogger;
    const void* messageCounter;
    int messages;
    const void* alertCounter;
    int alerts;
    const void* position;
    int positionsMade; ///< by this module
    const void* alertWord;
    const void* lineEnd;
    const void* allocate; ///< the heap's function
};
View viewOfThisModule();

} // namespace TwoModules
