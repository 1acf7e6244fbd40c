#pragma once

// Wine's header lacks this name.

#pragma GCC system_header
#include_next <wincon.h>

using PCONSOLE_SCREEN_BUFFER_INFO = LPCONSOLE_SCREEN_BUFFER_INFO;
