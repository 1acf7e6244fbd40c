#pragma once

// Visual C++ has no such header, but libc++ brings one, and Boost would take type names apart with
// it that are not of its kind. This is how Boost knows a header of that name that is of no use.
#define __GABIXX_CXXABI_H__
