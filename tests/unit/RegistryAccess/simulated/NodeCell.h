#pragma once

#include <cstdint>

#include "ZOL/RegistryAccess/Registry.h"

/// The private data of a node: after its name it has a pointer to a cell, which holds the key and
/// the number of nodes that share it.
namespace support {

/// Null for a node without a key.
void* cellOf(const ZOL::RegistryAccess::Registry& node);

/// Of a cell that is not null.
HKEY keyIn(const void* cell);
std::int32_t referencesIn(const void* cell);

inline HKEY keyOf(const ZOL::RegistryAccess::Registry& node) {
    return keyIn(cellOf(node));
}
inline std::int32_t referencesOf(const ZOL::RegistryAccess::Registry& node) {
    return referencesIn(cellOf(node));
}

/// Releases one reference of the cell, as a node's destructor does: for those that assignment
/// leaks.
void releaseReference(void* cell);

} // namespace support
