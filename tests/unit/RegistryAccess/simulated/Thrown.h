#pragma once

#include <functional>
#include <string>

#include "ZOL/RegistryAccess/Registry.h"

namespace support {

/// What an action threw; the class is empty if it threw nothing, and "another" if it was no
/// registry error.
struct Thrown {
    std::string errorClass;
    int line = 0;
    std::string message;
    std::string file;
    std::string what;
};

Thrown thrownBy(const std::function<void()>& action);

/// "class line", or "nothing".
std::string summaryOf(const Thrown& thrown);

/// The bytes of a text.
ZOL::RegistryAccess::Registry::Bytes bytes(const std::string& text);
std::string text(const ZOL::RegistryAccess::Registry::Bytes& bytes);

} // namespace support
