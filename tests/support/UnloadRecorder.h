#pragma once

#include <cstddef>

/// The book that UnloadTrace keeps, fed by the platform's part of it. Allocates nothing of its own.
namespace support::UnloadRecorder {

void allocated(void* block, std::size_t size);
void freed(void* block);
void lockReleased();

} // namespace support::UnloadRecorder
