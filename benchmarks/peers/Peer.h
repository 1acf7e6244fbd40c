#pragma once

#include "../Row.h"

/// A peer is a module that exports one function of this name and type. Each is loaded with its
/// names kept to itself: several versions of one library would not get on in one module.
#if defined(_WIN32)
#define BENCHMARKS_PEER extern "C" __declspec(dllexport)
#else
#define BENCHMARKS_PEER extern "C" __attribute__((visibility("default")))
#endif

BENCHMARKS_PEER benchmarks::Rows benchmarkRows();
