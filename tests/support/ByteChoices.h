#pragma once

#include <cstddef>
#include <cstdint>

namespace support {

/// A fuzzer's bytes, read as choices. Behind their end all choices are the first.
class ByteChoices {
public:
    ByteChoices(const std::uint8_t* bytes, std::size_t size) : next_(bytes), end_(bytes + size) {}

    bool isEmpty() const { return next_ == end_; }

    /// From 0 on, less than limit, which is at most 256.
    std::size_t below(std::size_t limit) { return byte() % limit; }

protected:
    std::uint8_t byte() { return isEmpty() ? std::uint8_t{0} : *next_++; }

private:
    const std::uint8_t* next_;
    const std::uint8_t* end_;
};

} // namespace support
