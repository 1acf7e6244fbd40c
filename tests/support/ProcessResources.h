#pragma once

#include <cstddef>

namespace support {

/// The resources of this process at one time.
struct ProcessResources {
    std::size_t heapBytes = 0;     ///< in blocks that are not freed
    std::size_t openHandles = 0;   ///< files and other handles of the system
    std::size_t mappings = 0;      ///< regions of the address space that are in use
    std::size_t residentBytes = 0; ///< of physical memory

    static ProcessResources now();

    /// Whether the memory is the program's alone. A sanitizer's records are included and grow with
    /// every loaded library: with the address sanitizer by some 65 bytes of heap for each atexit
    /// handler of the library, with the thread sanitizer by its own pages.
    static const bool memoryIsOurs;
};

} // namespace support
