// What it returns has virtual functions, but those of another class.

#include "Parts.h"

class Stranger {
public:
    virtual ~Stranger() = default;
    virtual void work() {}
    virtual void rest() {}
};

extern "C" ZOL_BACKEND_EXPORT void* createBackend() {
    return new Stranger;
}
