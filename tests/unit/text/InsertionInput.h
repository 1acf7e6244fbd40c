#pragma once

#include <cstdint>
#include <string>

#include "FuzzInput.h"

namespace text {

/// Values to insert into a stream.
class InsertionInput : public support::FuzzInput {
public:
    using FuzzInput::FuzzInput;

    /// Of a random bit length: uniformly distributed numbers would nearly all be huge.
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
