#pragma once

#include "ZOL/Framework/Exceptions/FrameworkException.h"

namespace ZOL::Framework::Exceptions {

/// A property was read or cleared that is not there. Private to the module: others catch it as
/// FrameworkException.
class UnexistentProperty : public FrameworkException {
public:
    explicit UnexistentProperty(const char* message) : FrameworkException(message) {}
    UnexistentProperty(const UnexistentProperty&) = default;
    ~UnexistentProperty() override = default;
};

} // namespace ZOL::Framework::Exceptions
