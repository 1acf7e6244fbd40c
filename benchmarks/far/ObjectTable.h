#pragma once

#include "Export.h"

namespace benchmarks {

/// Objects by name behind a lock, found without a copy of the name.
class ObjectTable {
public:
    BENCHMARKS_FAR static void enter(const char* name, void* object);
    BENCHMARKS_FAR static void* find(const char* name);
};

} // namespace benchmarks
