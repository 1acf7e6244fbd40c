#pragma once

#include <cstdint>

#include "ZOL/RegistryAccess/Registry.h"

namespace ZOL::RegistryAccess {

/// An open key and the number of nodes that share it. The last release closes the key and deletes
/// the object.
class Registry::HandleHolder {
public:
    explicit HandleHolder(HKEY openKey) : key(openKey) {}
    HandleHolder(const HandleHolder&) = delete;
    HandleHolder& operator=(const HandleHolder&) = delete;

    void addReference() { ++references; }

    void release() {
        if (--references == 0) {
            delete this;
        }
    }

    const HKEY key;

private:
    ~HandleHolder() { RegCloseKey(key); }

    std::int32_t references = 1;
};

} // namespace ZOL::RegistryAccess
