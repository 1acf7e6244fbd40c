#pragma once

// What Visual C++'s headers say in this one, as far as a C++ library asks for it.

#include <corecrt.h>

#define _HAS_EXCEPTIONS 1
