#pragma once

#include <cstdio>

namespace ZOL::Backends {

/// Gives a newly opened file a descriptor above those of the standard streams. If the process has
/// closed a standard stream, the system gives its number to the next file, and all that the process
/// prints would arrive there. If that fails, so does each write to the file.
void keepApartFromStandardStreams(std::FILE* file) noexcept;

} // namespace ZOL::Backends
