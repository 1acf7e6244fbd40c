#pragma once

// Wine has these declarations in <winbase.h>.

#include <winbase.h>
