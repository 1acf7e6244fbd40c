// Interposes functions of the libraries: definitions in the program take precedence.

#include <cstdlib>
#include <new>

#include <dlfcn.h>
#include <pthread.h>

#include "UnloadRecorder.h"
#include "UnloadTrace.h"

namespace support::UnloadTrace {

const bool everyLockHasAResource = true;
const bool seesStrings = true;

void attach() {}

} // namespace support::UnloadTrace

void* operator new(std::size_t size) {
    void* const block = std::malloc(size);
    if (block == nullptr) {
        throw std::bad_alloc();
    }
    support::UnloadRecorder::allocated(block, size);
    return block;
}

void operator delete(void* block) noexcept {
    support::UnloadRecorder::freed(block);
    std::free(block);
}

void operator delete(void* block, std::size_t) noexcept {
    operator delete(block);
}

extern "C" [[gnu::visibility("default")]] int
pthread_mutex_destroy(pthread_mutex_t* mutex) noexcept {
    using Function = int(pthread_mutex_t*);
    static auto* const next =
        reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "pthread_mutex_destroy"));
    support::UnloadRecorder::lockReleased();
    return next(mutex);
}
