#pragma once

#include <algorithm>
#include <cstddef>

#include "ProcessResources.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

/// How many loads to compare with so many rounds of a leak test: at least 5000, because the leaks
/// of Wine come in portions.
constexpr int loadsToCompare(int rounds) {
    return std::max(5000, 2 * rounds);
}

/// How many bytes of heap the platform's loader leaks by itself when an empty module is loaded and
/// unloaded that often: none on Linux and in Wine 8, some 10 bytes per load in Wine 10.
inline std::size_t loaderGrowth(int loads) {
    const auto load = [] {
        const ZOL::Gadgets::DLL::DLLHolder module("EmptyModule", "");
    };
    load();
    const std::size_t before = support::ProcessResources::now().heapBytes;
    for (int i = 0; i < loads; ++i) {
        load();
    }
    const std::size_t after = support::ProcessResources::now().heapBytes;
    return after > before ? after - before : 0;
}
