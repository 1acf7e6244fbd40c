#pragma once

#include <string>

#include "ZOL/RegistryAccess/Registry.h"

namespace Demo {

/// Where a key is.
struct KeyPath {
    HKEY root;
    std::string rootName;
    std::string path; ///< from the root

    std::string text() const { return path.empty() ? rootName : rootName + "\\" + path; }
};

/// Understands "HKCU\Control Panel" and "HKEY_CURRENT_USER\Control Panel", likewise for HKLM and
/// HKCR. Throws std::runtime_error for anything else.
KeyPath parseKeyPath(const std::string& text);

} // namespace Demo
