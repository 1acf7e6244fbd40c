#include "ZOL/Platform/Fork.h"

namespace ZOL::Platform {

void keepUsableAfterFork(boost::recursive_mutex&) {}

} // namespace ZOL::Platform
