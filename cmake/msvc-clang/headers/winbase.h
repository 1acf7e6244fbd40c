#pragma once

// In Microsoft's header, the macro for DeleteFile also renames the member of a structure, as a C++
// library expects.

#pragma GCC system_header
#if defined(UNICODE)
#define DeleteFile DeleteFileW
#else
#define DeleteFile DeleteFileA
#endif
#include_next <winbase.h>

#if !defined(SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE)
#define SYMBOLIC_LINK_FLAG_ALLOW_UNPRIVILEGED_CREATE 2
#endif

// Wine's header lacks these.
extern "C" {
BOOL WINAPI GetProcessHandleCount(HANDLE, DWORD*);
BOOL WINAPI SetThreadStackGuarantee(ULONG*);
}
