// A program that is linked with the framework and uses it before main, in main and behind it.

#include <cstdlib>

#include "EveryService.h"

namespace {

class Life {
public:
    Life() { useEveryService("static initialiser"); }
    Life(const Life&) = delete;
    Life& operator=(const Life&) = delete;
    ~Life() { useEveryService("static destructor"); }
};

// Has used the property store before anything is registered for the exit, so that the store goes
// after all of it.
const Life life;

} // namespace

int main() {
    useEveryService("main");
    std::atexit([] { useEveryService("atexit handler"); });
    return 0;
}
