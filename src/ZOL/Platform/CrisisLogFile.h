#pragma once

#include <cstdio>

namespace ZOL::Platform {

extern const char* const crisisLogPath;

/// Opens the crisis log in text mode for appending and reading, and creates it if necessary. While
/// it is open, every other call of this function fails, in any process. Returns null on failure.
std::FILE* openCrisisLogFile();

} // namespace ZOL::Platform
