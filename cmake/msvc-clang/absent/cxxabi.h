#pragma once

// Visual C++ has no such header, but libc++ has one. Boost would use it to demangle names that are
// not mangled its way. Boost ignores a header that defines this macro.
#define __GABIXX_CXXABI_H__
