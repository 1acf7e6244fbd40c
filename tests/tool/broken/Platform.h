#pragma once

#include <cstddef>

// The parts of the broken plug-ins that call the system.

/// Blocks SIGUSR1 in this thread; Linux only.
void blockSignal();

/// Sets the umask to 135; Linux only.
void changeUmask();

/// Makes standard error a file.
void replaceStandardError();

/// Opens a file for appending and never closes it.
void openForever(const char* name);

/// Memory that is not on the heap and is never freed.
void* mapMemory(std::size_t size);
