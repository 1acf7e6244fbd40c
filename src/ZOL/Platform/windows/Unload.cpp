#include "ZOL/Platform/Unload.h"

#include <cstdlib>

namespace ZOL::Platform {

void atUnload(void (*function)()) {
    std::atexit(function);
}

} // namespace ZOL::Platform
