#pragma once

#include <cstdio>

namespace ZOL::Platform {

extern const char* const crisisLogPath;

/// Opens the crisis log for appending and reading, as text, created if it is missing. While it is
/// open, every other open of it by this function fails, in any process. Null on failure.
std::FILE* openCrisisLogFile();

} // namespace ZOL::Platform
