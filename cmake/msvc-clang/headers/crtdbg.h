#pragma once

// Wine's header lacks what a release build of a test framework names.

#pragma GCC system_header
#include_next <crtdbg.h>

#define _CRTDBG_MODE_FILE 1
#define _CRTDBG_MODE_DEBUG 2
#define _CRTDBG_FILE_STDERR nullptr
#define _CrtSetReportFile(kind, file) nullptr
