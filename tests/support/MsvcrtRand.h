#pragma once

#include <cstdint>

namespace support {

/// srand and rand of the Windows C runtime.
class MsvcrtRand {
public:
    explicit MsvcrtRand(std::uint32_t seed) : state_(seed) {}

    std::uint32_t next() {
        state_ = state_ * 214013U + 2531011U;
        return (state_ >> 16) & 0x7FFFU;
    }

private:
    std::uint32_t state_;
};

} // namespace support
