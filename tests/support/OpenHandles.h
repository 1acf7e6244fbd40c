#pragma once

#include <cstddef>

namespace support {

/// How many handles of the system this process has open, registry keys included.
std::size_t openHandles();

/// Throws and catches an exception, so that what a process opens for its first one is open.
void warmUpExceptions();

} // namespace support
