#pragma once

#include <array>
#include <string>

#include <windows.h>

namespace ZOL::RegistryAccess {

/// Size in bytes of what enumerations read names and data into: fixed, with no second attempt for
/// what does not fit.
constexpr DWORD enumerationBufferSize = 261;

using EnumerationBuffer = std::array<char, enumerationBufferSize>;

/// One value of a key as the platform enumerates it. Made anew for each index: nothing of an
/// earlier value is left in it.
struct EnumeratedValue {
    /// The platform's answer: 0, 259 behind the last value, or a failure.
    LONG read(HKEY key, DWORD index);

    std::string name() const { return {nameBuffer.data(), nameLength}; }

    EnumerationBuffer nameBuffer{};
    DWORD nameLength = enumerationBufferSize;
    DWORD type = 0;
    EnumerationBuffer data{};
    // Of a text that fills the buffer without a zero, the platform looks at the byte behind, and
    // writes a zero there along.
    const char behindData = '\1';
    DWORD dataSize = enumerationBufferSize;
};

} // namespace ZOL::RegistryAccess
