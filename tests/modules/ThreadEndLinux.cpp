#include "ThreadEnd.h"

#include <pthread.h>

namespace {

using Function = void(const char*);

class AtThreadEnd {
public:
    AtThreadEnd() = default;
    AtThreadEnd(const AtThreadEnd&) = delete;
    AtThreadEnd& operator=(const AtThreadEnd&) = delete;
    ~AtThreadEnd() {
        if (function != nullptr) {
            function("thread_local destructor");
        }
    }

    Function* function = nullptr;
};

thread_local AtThreadEnd local;

void callFromKey(void* function) {
    reinterpret_cast<Function*>(function)("destructor of a key");
}

pthread_key_t makeKey() {
    pthread_key_t made = {};
    pthread_key_create(&made, callFromKey);
    return made;
}

const pthread_key_t key = makeKey();

} // namespace

void atThreadEnd(Function* function) {
    local.function = function;
    pthread_setspecific(key, reinterpret_cast<void*>(function));
}

void forgetThreadEnds() {
    pthread_key_delete(key);
}
