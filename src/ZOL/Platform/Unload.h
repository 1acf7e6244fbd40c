#pragma once

namespace ZOL::Platform {

/// Registers a function that is called when the module unloads, before functions and destructors
/// that were registered earlier.
void atUnload(void (*function)());

} // namespace ZOL::Platform
