#pragma once

#include <cstddef>
#include <cstdint>
#include <cstring>
#include <string>

namespace text {

/// Bytes, read as choices. Behind their end all choices are the first.
class Choices {
public:
    Choices(const std::uint8_t* bytes, std::size_t size) : next_(bytes), end_(bytes + size) {}

    bool isEmpty() const { return next_ == end_; }

    /// From 0 on, less than limit, which is at most 256.
    std::size_t below(std::size_t limit) { return byte() % limit; }

    /// Any value of the type, bit by bit.
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

    /// As often short as long; numbers that are used as they are would nearly all be huge.
    template <typename Integer>
    Integer integer() {
        const auto bits = value<std::uint64_t>();
        return static_cast<Integer>(bits >> below(64));
    }

    double number();
    void* address();
    std::string text();

private:
    std::uint8_t byte() { return isEmpty() ? std::uint8_t{0} : *next_++; }

    const std::uint8_t* next_;
    const std::uint8_t* end_;
};

} // namespace text
