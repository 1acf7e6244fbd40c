#pragma once

#include <cstdint>
#include <string>

#include "ByteChoices.h"
#include "SimulatedRegistry.h"

namespace fuzz {

/// Choices of what is called, and with what.
class Input : public support::ByteChoices {
public:
    using ByteChoices::ByteChoices;

    std::string keyPath();
    std::string valueName();
    std::string data();
    DWORD type();
    std::int32_t number();

    /// Not 0.
    LONG failure();
};

} // namespace fuzz
