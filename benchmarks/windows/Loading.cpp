#include <windows.h>

// Google Benchmark reads the clock rate from the Windows registry through shlwapi. If this program
// imported that library, loading the framework would not have to load it. This definition takes the
// place of the import: it finds no value, and Google Benchmark estimates the clock rate, which no
// table uses.

namespace {

DWORD WINAPI findNoValue(HKEY, const char*, const char*, DWORD*, void*, DWORD*) {
    return ERROR_FILE_NOT_FOUND;
}

} // namespace

extern "C" {
extern decltype(&findNoValue) const googleBenchmarkImport asm("__imp_SHGetValueA");
decltype(&findNoValue) const googleBenchmarkImport = findNoValue;
}
