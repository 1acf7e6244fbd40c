#include "ZOL/Platform/CrisisLogFile.h"

#include <cwchar>

#include <share.h>

namespace ZOL::Platform {

const char* const crisisLogPath = "C:\\zol.log";

std::FILE* openCrisisLogFile() {
    // The sharing that _wfopen_s means for a file opened for writing; asked for by name, it is kept
    // by every C runtime, Wine's included.
    return _wfsopen(L"C:\\zol.log", L"a+", _SH_DENYRW);
}

} // namespace ZOL::Platform
