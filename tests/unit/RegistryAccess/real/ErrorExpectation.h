#pragma once

#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "ZOL/RegistryAccess/Registry.h"

namespace support {

template <typename Error>
struct ClassName;

template <>
struct ClassName<ZOL::RegistryAccess::Registry::AccessDenied> {
    static constexpr const char* text = "AccessDenied";
};
template <>
struct ClassName<ZOL::RegistryAccess::Registry::OpenError> {
    static constexpr const char* text = "OpenError";
};
template <>
struct ClassName<ZOL::RegistryAccess::Registry::CreationError> {
    static constexpr const char* text = "CreationError";
};
template <>
struct ClassName<ZOL::RegistryAccess::Registry::NotFound> {
    static constexpr const char* text = "NotFound";
};
template <>
struct ClassName<ZOL::RegistryAccess::Registry::NotInitialized> {
    static constexpr const char* text = "NotInitialized";
};

/// Expects that the operation throws this very class, with these texts to the byte.
template <typename Error, typename Operation>
void expectError(int line, const std::string& message, Operation operation) {
    const std::string file = "src\\..\\src\\ZOL\\RegistryAccess\\Registry";
    try {
        operation();
        ADD_FAILURE() << "nothing was thrown where line " << line << " was expected";
    } catch (const ZOL::RegistryAccess::Registry::GenericRegistryError& error) {
        EXPECT_EQ(typeid(error), typeid(Error));
        EXPECT_EQ(error.message(), message);
        EXPECT_EQ(error.filename(), file);
        EXPECT_EQ(error.lineNumber(), line);
        EXPECT_EQ(error.what(), std::string("class ZOL::RegistryAccess::Registry::") +
                                    ClassName<Error>::text + "' (" + file + ":" +
                                    std::to_string(line) + "): " + message);
    }
}

} // namespace support
