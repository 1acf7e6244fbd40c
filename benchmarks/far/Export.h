#pragma once

// The far side of the floors is a module of its own, as the product is to its users.
#if defined(_WIN32)
#if defined(BENCHMARKS_FAR_BUILD)
#define BENCHMARKS_FAR __declspec(dllexport)
#else
#define BENCHMARKS_FAR __declspec(dllimport)
#endif
#else
#define BENCHMARKS_FAR __attribute__((visibility("default")))
#endif
