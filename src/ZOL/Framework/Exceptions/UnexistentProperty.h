#pragma once

#include "ZOL/Framework/Exceptions/FrameworkException.h"

namespace ZOL::Framework::Exceptions {

/// Thrown if a property that does not exist is read or cleared. Private to the module: users catch
/// it as FrameworkException.
class UnexistentProperty : public FrameworkException {
public:
    explicit UnexistentProperty(const char* message) : FrameworkException(message) {}
    UnexistentProperty(const UnexistentProperty&) = default;
    ~UnexistentProperty() override = default;
};

} // namespace ZOL::Framework::Exceptions
