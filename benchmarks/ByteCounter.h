#pragma once

#include <cstddef>
#include <cstring>

namespace benchmarks {

/// Sits in a sink and adds up the sizes of the texts that arrive. It counts only while the delivery
/// is checked: reading a text is not part of what is measured.
struct ByteCounter {
    void add(const char* text) {
        if (isCounting) {
            bytes += std::strlen(text);
        }
    }
    void add(std::size_t size) {
        if (isCounting) {
            bytes += size;
        }
    }

    std::size_t bytes = 0;
    bool isCounting = false;
};

/// The named object of the process that is the discarding back end's ByteCounter.
inline constexpr char discardCounterName[] = "benchmarks: discarded bytes";

} // namespace benchmarks
