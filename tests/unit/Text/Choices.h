#pragma once

#include <cstdint>
#include <cstring>
#include <string>

#include "ByteChoices.h"

namespace text {

/// Choices of what a line is made of.
class Choices : public support::ByteChoices {
public:
    using ByteChoices::ByteChoices;

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
};

} // namespace text
