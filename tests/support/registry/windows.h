#pragma once

// What the registry access needs of the system's header of this name, for platforms without it.
// These functions are implemented by support::SimulatedRegistry.

#include <cstdint>
#include <cstring>

using BYTE = std::uint8_t;
using DWORD = std::uint32_t;
using LONG = std::int32_t;

struct OpaqueRegistryKey;
using HKEY = const OpaqueRegistryKey*;

namespace support {

inline HKEY keyOfNumber(std::intptr_t number) {
    HKEY key = nullptr;
    std::memcpy(&key, &number, sizeof(number));
    return key;
}

} // namespace support

// Predefined keys are 32-bit numbers with their sign extended.
inline const HKEY HKEY_CURRENT_USER = support::keyOfNumber(static_cast<LONG>(0x80000001));
inline const HKEY HKEY_LOCAL_MACHINE = support::keyOfNumber(static_cast<LONG>(0x80000002));

constexpr LONG ERROR_SUCCESS = 0;
constexpr LONG ERROR_FILE_NOT_FOUND = 2;
constexpr LONG ERROR_ACCESS_DENIED = 5;
constexpr LONG ERROR_INVALID_HANDLE = 6;
constexpr LONG ERROR_INVALID_PARAMETER = 87;
constexpr LONG ERROR_MORE_DATA = 234;
constexpr LONG ERROR_NO_MORE_ITEMS = 259;
constexpr LONG ERROR_KEY_DELETED = 1018;
constexpr LONG ERROR_NO_SYSTEM_RESOURCES = 1450;

constexpr DWORD REG_NONE = 0;
constexpr DWORD REG_SZ = 1;
constexpr DWORD REG_EXPAND_SZ = 2;
constexpr DWORD REG_BINARY = 3;
constexpr DWORD REG_DWORD = 4;
constexpr DWORD REG_MULTI_SZ = 7;
constexpr DWORD REG_QWORD = 11;

extern "C" {

LONG RegOpenKeyA(HKEY parent, const char* path, HKEY* result);
LONG RegCreateKeyA(HKEY parent, const char* path, HKEY* result);
LONG RegCloseKey(HKEY key);
LONG RegQueryValueExA(HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data,
                      DWORD* size);
LONG RegSetValueExA(HKEY key, const char* name, DWORD reserved, DWORD type, const BYTE* data,
                    DWORD size);
LONG RegDeleteValueA(HKEY key, const char* name);
LONG RegEnumKeyA(HKEY key, DWORD index, char* name, DWORD size);
LONG RegEnumValueA(HKEY key, DWORD index, char* name, DWORD* nameSize, DWORD* reserved, DWORD* type,
                   BYTE* data, DWORD* dataSize);
}
