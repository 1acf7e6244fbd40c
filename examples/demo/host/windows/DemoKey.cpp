#include "host/windows/DemoKey.h"

#include <iostream>

using ZOL::RegistryAccess::Registry;

namespace Demo {

namespace {

const std::string parent = "Software";

} // namespace

DemoKey::DemoKey()
    : name_("ZOL_Framework demo." + std::to_string(GetCurrentProcessId())),
      node_(Registry::create(HKEY_CURRENT_USER, parent + "\\" + name_)) {}

DemoKey::~DemoKey() {
    try {
        Registry::open(HKEY_CURRENT_USER, parent).deleteSubKey(name_);
    } catch (const Registry::GenericRegistryError& error) {
        std::cerr << "DemoHost: '" << name_ << "' is left in the registry: " << error.what()
                  << '\n';
    }
}

KeyPath DemoKey::below(const std::string& name) const {
    return {HKEY_CURRENT_USER, "HKEY_CURRENT_USER", parent + "\\" + name_ + "\\" + name};
}

bool DemoKey::isIn(const Registry& tree) const {
    return tree.hasSubKey(name_) || tree.hasSubKey(parent + "\\" + name_);
}

} // namespace Demo
