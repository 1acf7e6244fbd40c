#pragma once

#include <cstddef>

namespace backendcheck {

// Between the common part of the heap and that of the platform. These functions take no lock and no
// memory, and need no constructor: allocation functions call them at any time.

/// To be called when a block is allocated and freed.
void countAllocated(std::size_t size);
void countFreed(std::size_t size);

/// Keeps a block that is being freed.
void keepBlock(void* block, std::size_t size);

// The platform's part.

void hookHeap();
std::size_t sizeOfBlock(void* block);
void releaseBlock(void* block);

} // namespace backendcheck
