#include <cstdlib>
#include <new>

#include "ImportHook.h"
#include "UnloadRecorder.h"
#include "UnloadTrace.h"

namespace support::UnloadTrace {

namespace {

void* recordingNew(std::size_t size) {
    void* const block = ::operator new(size);
    UnloadRecorder::allocated(block, size);
    return block;
}

void recordingDelete(void* block) {
    UnloadRecorder::freed(block);
    ::operator delete(block);
}

BOOL WINAPI recordingCloseHandle(HANDLE handle) {
    UnloadRecorder::lockReleased();
    return CloseHandle(handle);
}

} // namespace

const bool everyLockHasAResource = false;

#if defined(_MSC_VER)

// The operators are linked into the module, and import what they call. The strings use them too.
const bool seesStrings = true;

void attach() {
    HMODULE const module = GetModuleHandleA("ZOL_Framework_r.2.0.8.129.dll");
    hookImport(module, "malloc", reinterpret_cast<void*>(&recordingNew));
    hookImport(module, "free", reinterpret_cast<void*>(&recordingDelete));
    hookImport(module, "CloseHandle", reinterpret_cast<void*>(&recordingCloseHandle));
}

#else

const bool seesStrings = false;

static void recordingSizedDelete(void* block, std::size_t) {
    recordingDelete(block);
}

void attach() {
    HMODULE const module = GetModuleHandleA("ZOL_Framework_r.2.0.8.129.dll");
    hookImport(module, "_Znwy", reinterpret_cast<void*>(&recordingNew));
    hookImport(module, "_ZdlPv", reinterpret_cast<void*>(&recordingDelete));
    hookImport(module, "_ZdlPvy", reinterpret_cast<void*>(&recordingSizedDelete));
    hookImport(module, "CloseHandle", reinterpret_cast<void*>(&recordingCloseHandle));
}

#endif

} // namespace support::UnloadTrace
