#pragma once

#include "../Subject.h"

/// A peer is a module that exports one function of this name and type, which stores the peer's
/// rows. Each is loaded with local symbols: two versions of one library would clash in one module.
#if defined(_WIN32)
#define BENCHMARKS_PEER extern "C" __declspec(dllexport)
#else
#define BENCHMARKS_PEER extern "C" __attribute__((visibility("default")))
#endif

BENCHMARKS_PEER void benchmarkRows(std::vector<benchmarks::Row>& rows);
