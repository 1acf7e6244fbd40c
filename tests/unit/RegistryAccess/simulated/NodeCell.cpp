#include "NodeCell.h"

#include <cstring>
#include <string>

using ZOL::RegistryAccess::Registry;

namespace support {

namespace {

static_assert(sizeof(Registry) == sizeof(std::string) + sizeof(void*));

constexpr std::size_t cellOffset = sizeof(std::string);

} // namespace

void* cellOf(const Registry& node) {
    void* cell = nullptr;
    std::memcpy(&cell, reinterpret_cast<const char*>(&node) + cellOffset, sizeof(cell));
    return cell;
}

HKEY keyIn(const void* cell) {
    HKEY key = nullptr;
    std::memcpy(&key, cell, sizeof(void*));
    return key;
}

std::int32_t referencesIn(const void* cell) {
    std::int32_t references = 0;
    std::memcpy(&references, static_cast<const char*>(cell) + sizeof(void*), sizeof(references));
    return references;
}

void releaseReference(void* cell) {
    Registry node;
    std::memcpy(reinterpret_cast<char*>(&node) + cellOffset, &cell, sizeof(cell));
}

} // namespace support
