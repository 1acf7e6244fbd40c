#include "ZOL/Platform/CrisisLogFile.h"

#include <cwchar>

#include <share.h>

#define CRISIS_LOG_PATH "C:\\zol.log"

namespace ZOL::Platform {

const char* const crisisLogPath = CRISIS_LOG_PATH;

std::FILE* openCrisisLogFile() {
    // _wfopen_s opens a file for writing with the same sharing mode, but Wine's C runtime does not
    // enforce it there.
    return _wfsopen(L"" CRISIS_LOG_PATH, L"a+", _SH_DENYRW);
}

} // namespace ZOL::Platform
