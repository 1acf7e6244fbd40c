#pragma once

#include <cstddef>

/// The records of UnloadTrace, filled by the platform's part. Allocates nothing.
namespace support::UnloadRecorder {

void allocated(void* block, std::size_t size);
void freed(void* block);
void lockReleased();

} // namespace support::UnloadRecorder
