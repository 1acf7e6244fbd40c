#include "ZOL/Platform/Fork.h"

#include <pthread.h>
#include <unistd.h>

namespace ZOL::Platform {

namespace {

pthread_mutex_t* mutexOverFork = nullptr;

// Written and read by the thread that has the mutex, or by the only thread of a child. False when a
// fork follows the destruction of the mutex at the end of the process.
bool isLocked = false;

void beforeFork() {
    isLocked = pthread_mutex_lock(mutexOverFork) == 0;
}

void inParent() {
    if (isLocked) {
        pthread_mutex_unlock(mutexOverFork);
    }
}

void inChild() {
    if (isLocked) {
        // A recursive mutex records the thread that has it by its system-wide number, and the
        // forking thread has a new number in the child. The count stays as it is: the thread may
        // have forked while it was logging.
        mutexOverFork->__data.__owner = gettid();
        pthread_mutex_unlock(mutexOverFork);
    }
}

} // namespace

void keepUsableAfterFork(boost::recursive_mutex& mutex) {
    mutexOverFork = mutex.native_handle();
    // Fails only if there is no memory for the registration. Loading the module must not fail for
    // that: few processes fork without exec. The C library removes the handlers when the module
    // unloads.
    (void)pthread_atfork(beforeFork, inParent, inChild);
}

} // namespace ZOL::Platform
