#pragma once

#include "Export.h"

namespace benchmarks {

/// Two tables of objects by name, one a tree and one of hash values, each behind a recursive lock.
class NameTable {
public:
    BENCHMARKS_FAR static void enter(const char* name);
    BENCHMARKS_FAR static void* inTree(const char* name);
    BENCHMARKS_FAR static void* inHashTable(const char* name);
};

} // namespace benchmarks
