#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <iterator>

namespace support {

/// Turns the bytes of a fuzzer or of a random generator into values. After the last byte all bytes
/// are 0.
class FuzzInput {
public:
    FuzzInput(const std::uint8_t* bytes, std::size_t size) : next_(bytes), end_(bytes + size) {}

    bool isEmpty() const { return next_ == end_; }

    /// From 0 on, less than limit, which is at most 256.
    std::size_t below(std::size_t limit) { return byte() % limit; }

    /// One of the elements of an array.
    template <typename Array>
    const auto& pick(const Array& array) {
        return array[below(std::size(array))];
    }

    /// Any bit pattern of the type.
    template <typename Value>
    Value value() {
        std::uint64_t bits = 0;
        static_assert(sizeof(Value) <= sizeof bits);
        for (std::size_t i = 0; i < sizeof(Value); ++i) {
            bits |= std::uint64_t{byte()} << (8 * i);
        }
        Value result;
        std::memcpy(&result, &bits, sizeof result);
        return result;
    }

protected:
    std::uint8_t byte() { return isEmpty() ? std::uint8_t{0} : *next_++; }

private:
    const std::uint8_t* next_;
    const std::uint8_t* end_;
};

} // namespace support
