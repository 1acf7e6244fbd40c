#pragma once

#include <cstddef>
#include <cstring>

namespace benchmarks {

/// Where delivered texts end. Adds up their sizes only while they are counted: to read a text is
/// not what is measured.
struct FarSide {
    void take(const char* text) {
        if (isCounted) {
            bytes += std::strlen(text);
        }
    }

    std::size_t bytes = 0;
    bool isCounted = false;
};

} // namespace benchmarks
