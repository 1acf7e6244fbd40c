#pragma once

#include "ZOL/Gadgets/DLL/DLLHolder.h"

namespace support {

/// Whether a library of that base name is in the process; loads nothing.
inline bool isLoaded(const char* name, const char* version) {
    const std::string fileName = ZOL::Gadgets::DLL::DLLHolder::dllFileName(name, version);
#if defined(_WIN32)
    return GetModuleHandleA(fileName.c_str()) != nullptr;
#else
    void* const handle = dlopen(fileName.c_str(), RTLD_NOW | RTLD_NOLOAD);
    if (handle != nullptr) {
        dlclose(handle);
    }
    return handle != nullptr;
#endif
}

} // namespace support
