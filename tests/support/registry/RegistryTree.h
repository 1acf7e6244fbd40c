#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include "windows.h"

namespace support {

struct RegistryValue {
    std::string name;
    DWORD type = REG_NONE;
    std::string data;
};

/// A key with what lies in it. Lookups ignore case, names keep theirs; the order is that of making.
struct RegistryKey {
    using Pointer = std::shared_ptr<RegistryKey>;

    /// Null if there is none.
    RegistryValue* findValue(const std::string& valueName);

    /// A value that is there keeps its place and the case of its name.
    void setValue(const std::string& valueName, DWORD type, const std::string& data);

    bool eraseValue(const std::string& valueName);

    /// Null if there is none. In a path, components that are empty count for nothing.
    Pointer find(const std::string& path);

    /// Makes what is missing.
    Pointer make(const std::string& path);

    /// With all that lies below it, which then is marked as deleted.
    bool erase(const std::string& path);

    /// How many keys lie below it.
    std::size_t count() const;

    /// All that lies in it, values before keys: "path\" for a key, "path\name=type:data" for a
    /// value.
    std::vector<std::string> listing(const std::string& prefix = "") const;

    void markDeleted();

    std::string name;
    std::vector<RegistryValue> values;
    std::vector<Pointer> subKeys;
    bool deleted = false;

private:
    std::vector<Pointer>::iterator findSubKey(const std::string& subKeyName);
};

} // namespace support
