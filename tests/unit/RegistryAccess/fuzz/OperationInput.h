#pragma once

#include <string>

#include "FuzzInput.h"
#include "SimulatedRegistry.h"

namespace fuzz {

/// Arguments of registry operations.
class OperationInput : public support::FuzzInput {
public:
    using FuzzInput::FuzzInput;

    std::string keyPath();
    std::string valueName();
    std::string data();
    DWORD type();

    /// A result code, never 0.
    LONG failure();
};

} // namespace fuzz
