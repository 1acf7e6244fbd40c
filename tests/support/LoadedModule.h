#pragma once

#include <string>

#include "ZOL/Gadgets/DLL/DLLHolder.h"

namespace support {

/// Whether a library with that file name is in the process; loads nothing.
inline bool isLoaded(const std::string& fileName) {
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

/// The same for a library of that base name.
inline bool isLoaded(const char* name, const char* version) {
    return isLoaded(ZOL::Gadgets::DLL::DLLHolder::dllFileName(name, version));
}

} // namespace support
