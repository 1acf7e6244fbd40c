#include "ZOL/RegistryAccess/Registry.h"

#include <string>

#include "ZOL/Framework/Export.h"

using ZOL::RegistryAccess::Registry;

extern "C" ZOL_BACKEND_EXPORT int passThroughRegistry(int number) {
    const std::string name = "ZOL_Framework consumer." + std::to_string(GetCurrentProcessId());
    Registry parent = Registry::open(HKEY_CURRENT_USER, "Software");
    parent.createSubKey(name).updateIntValue("number", number);
    const int read = parent.openSubKey(name).getIntValue("number");
    parent.deleteSubKey(name);
    try {
        parent.openSubKey(name);
    } catch (const Registry::OpenError&) {
        return read;
    }
    return -1;
}
