#include "ZOL/Framework/Management/MemoryManager.h"

#include <cerrno>
#include <cstdlib>

#include "ZOL/Framework/Management/ObjectRegistry.h"
#include "ZOL/Framework/StaticObjects.h"

namespace ZOL::Framework::Management::MemoryManager {

void* allocate(std::size_t size) {
    return std::malloc(size);
}

void* reallocate(void* block, std::size_t size) {
    void* const result = std::realloc(block, size);
    if (result == nullptr && size != 0) {
        errno = ENOMEM; // Wine's C runtime does not set it
    }
    return result;
}

void deallocate(void* block) {
    std::free(block);
}

void* registerObject(const char* name, void* (*factory)()) {
    return objectRegistry.registerObject(name, factory);
}

void* findObject(const char* name) {
    return objectRegistry.findObject(name);
}

} // namespace ZOL::Framework::Management::MemoryManager
