// What it returns is no object with virtual functions.

#include "Parts.h"

struct Numbers {
    long first = 1;
    long second = 2;
};

extern "C" ZOL_BACKEND_EXPORT void* createBackend() {
    static Numbers numbers;
    return &numbers;
}
