#pragma once

// Microsoft's header brings <stdlib.h> along, whose MB_CUR_MAX a C++ library uses.

#pragma GCC system_header
#include_next <locale.h>

#include <stdlib.h>
