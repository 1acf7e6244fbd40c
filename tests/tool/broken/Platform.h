#pragma once

#include <cstddef>

// The parts of the broken plug-ins that call the system.

#include <fcntl.h>
#include <sys/stat.h>
#include <unistd.h>

/// Blocks SIGUSR1 in this thread; Linux only.
void blockSignal();

/// Memory that is not on the heap and is never freed.
void* mapMemory(std::size_t size);
