#include "../Platform.h"

#include <windows.h>

void blockSignal() {}

void* mapMemory(std::size_t size) {
    return VirtualAlloc(nullptr, size, MEM_RESERVE | MEM_COMMIT, PAGE_READWRITE);
}
