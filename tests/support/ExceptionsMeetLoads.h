#pragma once

#if defined(_WIN32)
#include <windows.h>
#endif

namespace support {

/// Whether an exception may pass on one thread while another loads or unloads a library. Not under
/// Wine 8: looking for handlers it walks its list of libraries without the lock of that list, and
/// now and then ends in an entry that is just gone.
inline bool exceptionsMayMeetLoads() {
#if defined(_WIN32)
    return GetProcAddress(GetModuleHandleA("ntdll.dll"), "wine_get_version") == nullptr;
#else
    return true;
#endif
}

} // namespace support
