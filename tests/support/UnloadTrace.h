#pragma once

#include <cstddef>
#include <map>
#include <string>
#include <vector>

/// Sees from outside what the framework module gives back while it unloads: blocks of the heap,
/// told apart by the call that allocated them, and the system resources of its locks.
///
/// Natively the test program's own operator new and pthread_mutex_destroy stand in front of the
/// module's; under Windows the module's imports are redirected.
namespace support::UnloadTrace {

/// Whether a lock has a system resource from the start, as pthread's have; on Windows it comes up
/// with the first thread that waits.
extern const bool everyLockHasAResource;

/// Whether the blocks of std::string are seen: on Windows the C++ runtime allocates them itself.
extern const bool seesStrings;

/// Gets between the module and its runtime; to be called after each load, before the first tag.
void attach();

/// Blocks that the module allocates from now on belong to tag; null for none of interest.
void tag(const char* tag);

/// From now on, what is given back is written down.
void start();

/// What was given back, in order: "lock", or "<tag> <size>" for a block.
std::vector<std::string> stop();

/// Blocks of that tag that are still there.
std::size_t alive(const char* tag);

/// What the blocks of that tag that are still there hold now, byte for byte, by their addresses.
std::map<const void*, std::string> contents(const char* tag);

/// Frees the blocks of that tag that are still there, as nobody else will.
void giveBack(const char* tag);

/// Puts every block out of sight: one that is freed while nobody looks would seem to be there
/// still.
void forget();

} // namespace support::UnloadTrace
