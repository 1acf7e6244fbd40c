#include "steps/ObjectFault.h"

namespace backendcheck {

using ZOL::Framework::GenericLogger::LoggerBackend;
using ZOL::Framework::GenericLogger::LoggingChannel;

namespace {

/// Crashes if the object does not begin with the address of a virtual table. The class is not
/// examined: C++ has no such cast, and the format of its description is Microsoft's own.
void readVirtualTable(const void* object) {
    const volatile char* const table = *static_cast<const volatile char* const volatile*>(object);
    (void)*table;
}

} // namespace

std::string objectFault(LoggerBackend* object) {
    readVirtualTable(object);
    return {};
}

std::string objectFault(LoggingChannel* object) {
    readVirtualTable(object);
    return {};
}

const char* const goodBackend =
    "the object has a virtual table; whether it is a LoggerBackend is not checked with Visual C++";

} // namespace backendcheck
