#pragma once

#include <cstdint>

namespace support {

/// The generator as the C runtime of Windows has it.
class Generator {
public:
    explicit Generator(std::uint32_t state) : state_(state) {}

    std::uint32_t draw() {
        state_ = state_ * 214013U + 2531011U;
        return (state_ >> 16) & 0x7FFFU;
    }

private:
    std::uint32_t state_;
};

} // namespace support
