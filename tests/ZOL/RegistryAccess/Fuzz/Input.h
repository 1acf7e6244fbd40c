#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "SimulatedRegistry.h"

namespace fuzz {

/// The fuzzer's bytes, read as choices. Behind their end all choices are the first.
class Input {
public:
    Input(const std::uint8_t* bytes, std::size_t size) : next_(bytes), end_(bytes + size) {}

    bool isEmpty() const { return next_ == end_; }

    /// From 0 on, less than limit, which is at most 256.
    std::size_t below(std::size_t limit) { return byte() % limit; }

    std::string keyPath();
    std::string valueName();
    std::string data();
    DWORD type();
    std::int32_t number();

    /// Not 0.
    LONG failure();

private:
    std::uint8_t byte() { return isEmpty() ? std::uint8_t{0} : *next_++; }

    const std::uint8_t* next_;
    const std::uint8_t* end_;
};

} // namespace fuzz
