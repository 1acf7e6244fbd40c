#pragma once

namespace ZOL::Platform {

/// Has the function called when the module unloads, before all that was registered earlier.
void atUnload(void (*function)());

} // namespace ZOL::Platform
