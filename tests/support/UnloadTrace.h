#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// Records what the framework module frees while it unloads: blocks of the heap, tagged when
/// allocated, and the system resources of its locks.
///
/// On Linux the test program interposes operator new and pthread_mutex_destroy; on Windows the
/// module's imports are redirected.
namespace support::UnloadTrace {

/// Whether a lock has a system resource from the start, as with pthreads; on Windows the first
/// thread that waits creates it.
extern const bool everyLockHasAResource;

/// Whether the blocks of std::string are seen: on Windows the C++ runtime allocates them itself.
extern const bool seesStrings;

/// Installs the hooks. Call after each load, before the first tag.
void attach();

/// Blocks that the module allocates from now on belong to tag; null for none of interest.
void tag(const char* tag);

/// From now on, frees are recorded.
void start();

/// What was freed, in order: "lock", or "<tag> <size>" for a block.
std::vector<std::string> stop();

/// The number of remaining blocks of that tag.
std::size_t alive(const char* tag);

/// The content of the remaining blocks of that tag, by address.
std::map<const void*, std::string> contents(const char* tag);

/// Frees the remaining blocks of that tag.
void freeBlocks(const char* tag);

/// Forgets every block: one that is freed while nothing is recorded would still count as alive.
void forget();

} // namespace support::UnloadTrace
