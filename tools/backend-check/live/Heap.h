#pragma once

#include <cstddef>

namespace backendcheck {

// The heap of the process that loads the plug-in: malloc and free on Linux, the heap of the C
// runtime library on Windows. C++ objects are on it too.
//
// Any thread may call these functions.

/// From now on the heap keeps freed blocks of up to 64 KiB: it overwrites them and does not
/// allocate their memory again, until there are very many. The use of a destroyed object then
/// crashes instead of finding another object in its place. To be called once, before other threads
/// exist.
void keepFreedBlocks();

/// The bytes of the blocks in use, counted from the call of keepFreedBlocks.
std::ptrdiff_t usedHeap();

/// The maximum of that so far.
std::size_t maxUsedHeap();

/// The memory of the blocks that are kept, in bytes.
std::size_t keptHeap();

/// Whether one of the kept blocks was written to.
bool isFreedBlockChanged();

/// What a plug-in did wrong if it crashed at that address because of a freed block, or null. Safe
/// in a signal handler.
const char* faultOfFreedBlock(const void* address);

} // namespace backendcheck
