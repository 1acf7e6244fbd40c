#pragma once

#include <windows.h>

namespace support {

/// Makes a loaded module call another function in place of one that it imports by that name.
/// Returns what it called before, or null if it imports no such function.
void* hookImport(HMODULE module, const char* name, void* replacement);

} // namespace support
