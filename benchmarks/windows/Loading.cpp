#include <windows.h>

// Google Benchmark reads the clock rate from the Windows registry through shlwapi. If this program
// imported that library, loading the framework would not have to load it. This definition takes the
// place of the import. It always fails, so that Google Benchmark estimates the clock rate, which no
// table uses.

namespace {

LSTATUS WINAPI fail(HKEY, const char*, const char*, DWORD*, void*, DWORD*) {
    return E_FAIL;
}

} // namespace

extern "C" {
extern decltype(&fail) const googleBenchmarkImport asm("__imp_SHGetValueA");
decltype(&fail) const googleBenchmarkImport = fail;
}
