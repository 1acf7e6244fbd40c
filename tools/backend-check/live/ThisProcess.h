#pragma once

#include <cstddef>

namespace backendcheck {

// What the memory at an address of this process is.

bool isReadable(const void* begin, std::size_t size);
bool isCode(const void* address);
bool isOnThisStack(const void* address);

// Whole pages, for texts that nobody may write to or read too far. Throw std::bad_alloc.

std::size_t pageSize();
char* newPages(std::size_t size);
void makeReadOnly(char* pages, std::size_t size);
void makeUnreadable(char* pages, std::size_t size);

// What this process uses.

std::size_t usedMemory(); // bytes
std::size_t openHandles();
std::size_t runningThreads();

} // namespace backendcheck
