#pragma once

#if defined(_WIN32)
#include <windows.h>
#endif

namespace support {

/// Whether one thread may throw while another loads or unloads a library. Not under Wine 8: its
/// search for handlers walks the list of libraries without the lock of that list and can access a
/// removed entry.
inline bool exceptionsMayMeetLoads() {
#if defined(_WIN32)
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") == nullptr;
#else
    return true;
#endif
}

} // namespace support
