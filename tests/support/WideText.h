#pragma once

#include <string_view>

#include "ZOL/Framework/Management/PropertyManager.h"

namespace support {

/// One unit for each byte, of the same value.
inline ZOL::Framework::Management::WideString wide(std::string_view bytes) {
    using Unit = ZOL::Framework::Management::WideString::value_type;
    ZOL::Framework::Management::WideString result;
    for (const char byte : bytes) {
        result += static_cast<Unit>(static_cast<unsigned char>(byte));
    }
    return result;
}

} // namespace support
