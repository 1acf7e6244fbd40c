#pragma once

#include <cstddef>

namespace support {

/// What this process has of the machine at one moment.
struct ProcessResources {
    std::size_t heapBytes = 0;     ///< in blocks that are not freed
    std::size_t openHandles = 0;   ///< files and other things of the system
    std::size_t mappings = 0;      ///< regions of the address space that are in use
    std::size_t residentBytes = 0; ///< of memory that is really there

    static ProcessResources now();

    /// Whether the memory told is the program's alone. A sanitizer's books are among it, and grow
    /// with every library that comes: with the address sanitizer by some 65 bytes of the heap for
    /// each clean-up that the library registers, with the thread sanitizer by pages of its own.
    static const bool memoryIsOurs;
};

} // namespace support
