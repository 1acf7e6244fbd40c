#pragma once

#include <cstdint>

#include "ZOL/RegistryAccess/Registry.h"

/// A look into a node: behind its name it has a pointer to a cell, and the cell has the key and
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

/// Takes one reference from the cell, as the end of a node does: for those that assignment never
/// gives back.
void giveBack(void* cell);

} // namespace support
