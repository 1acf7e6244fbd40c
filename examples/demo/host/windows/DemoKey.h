#pragma once

#include <string>

#include "ZOL/RegistryAccess/Registry.h"
#include "host/windows/KeyPath.h"

namespace Demo {

/// A key of this process's own below HKEY_CURRENT_USER, there for as long as the object lives.
class DemoKey {
public:
    /// Throws a registry error if it cannot be made.
    DemoKey();
    DemoKey(const DemoKey&) = delete;
    DemoKey& operator=(const DemoKey&) = delete;

    /// Takes everything below away too.
    ~DemoKey();

    /// Where a key below it is.
    KeyPath below(const std::string& name) const;

    /// Whether a tree with that root has this key in it. The root must not lie above that of the
    /// current user.
    bool isIn(const ZOL::RegistryAccess::Registry& tree) const;

    ZOL::RegistryAccess::Registry& node() { return node_; }

private:
    std::string name_;
    ZOL::RegistryAccess::Registry node_;
};

} // namespace Demo
