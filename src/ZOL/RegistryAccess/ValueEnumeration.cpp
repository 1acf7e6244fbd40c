#include "ZOL/RegistryAccess/ValueEnumeration.h"

namespace ZOL::RegistryAccess {

LONG EnumeratedValue::read(HKEY key, DWORD index) {
    return RegEnumValueA(key, index, nameBuffer.data(), &nameLength, nullptr, &type,
                         reinterpret_cast<BYTE*>(data.data()), &dataSize);
}

} // namespace ZOL::RegistryAccess
