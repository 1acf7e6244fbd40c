#pragma once

#include <cstddef>

namespace support {

/// How many things of the system this process has open, keys among them.
std::size_t openHandles();

/// Throws and catches an exception, so that what a process opens for its first one is open.
void warmUpExceptions();

} // namespace support
