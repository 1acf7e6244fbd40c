#pragma once

#include <array>
#include <string>

#include <windows.h>

namespace ZOL::RegistryAccess {

/// Size in bytes of the buffers for names and data. It is fixed: a name or data that does not fit
/// is a failure.
constexpr DWORD enumerationBufferSize = 261;

using EnumerationBuffer = std::array<char, enumerationBufferSize>;

/// One enumerated value of a key. Use a new object for each index, so that it contains nothing of
/// an earlier value.
struct EnumeratedValue {
    /// Reads the value with this index. Returns the platform's result: ERROR_SUCCESS,
    /// ERROR_NO_MORE_ITEMS after the last value, or another failure.
    LONG read(HKEY key, DWORD index);

    std::string name() const { return {nameBuffer.data(), nameLength}; }

    EnumerationBuffer nameBuffer{};
    DWORD nameLength = enumerationBufferSize;
    DWORD type = 0;
    EnumerationBuffer data{};
    // For a text without a terminating zero, RegSetValueExA reads the byte after it and stores it
    // too if it is zero. This byte prevents that for a text that fills the buffer.
    const char byteAfterData = '\1';
    DWORD dataSize = enumerationBufferSize;
};

} // namespace ZOL::RegistryAccess
