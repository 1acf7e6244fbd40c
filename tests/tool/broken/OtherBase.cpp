// The back end is not the first base of its class, and the pointer to it is made without a cast.

#include "Parts.h"

class Counting {
public:
    virtual ~Counting() = default;
    virtual int count() { return 0; }
};

class Both : public Counting, public BackendWith<Channel> {};

extern "C" ZOL_BACKEND_EXPORT void* createBackend() {
    return new Both;
}
