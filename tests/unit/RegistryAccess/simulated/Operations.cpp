#include "Operations.h"

#include <algorithm>
#include <stdexcept>

using ZOL::RegistryAccess::Registry;

namespace support {

const std::vector<Operation>& operations() {
    static const std::vector<Operation> all = {
        {"open",
         [](Registry&, Registry&) {
             Registry::open(HKEY_CURRENT_USER, "node\\sub");
         }},
        {"create",
         [](Registry&, Registry&) {
             Registry::create(HKEY_CURRENT_USER, "new\\key");
         }},
        {"hasSubKey",
         [](Registry& node, Registry&) {
             node.hasSubKey("sub");
         }},
        {"openSubKey",
         [](Registry& node, Registry&) {
             node.openSubKey("sub");
         }},
        {"createSubKey",
         [](Registry& node, Registry&) {
             node.createSubKey("new");
         }},
        {"deleteSubKey",
         [](Registry& node, Registry&) {
             node.deleteSubKey("sub");
         }},
        {"hasValue",
         [](Registry& node, Registry&) {
             node.hasValue("number");
         }},
        {"getStringValue",
         [](Registry& node, Registry&) {
             node.getStringValue("text");
         }},
        {"getIntValue",
         [](Registry& node, Registry&) {
             node.getIntValue("number");
         }},
        {"updateStringValue",
         [](Registry& node, Registry&) {
             node.updateStringValue("text", bytes("new"));
         }},
        {"updateIntValue",
         [](Registry& node, Registry&) {
             node.updateIntValue("number", 8);
         }},
        {"deleteValue",
         [](Registry& node, Registry&) {
             node.deleteValue("number");
         }},
        {"getSubKeys",
         [](Registry& node, Registry&) {
             node.getSubKeys();
         }},
        {"copyValuesFrom",
         [](Registry& node, Registry& other) {
             node.copyValuesFrom(other);
         }},
        {"copyFrom",
         [](Registry& node, Registry& other) {
             node.copyFrom(other);
         }},
    };
    return all;
}

std::vector<Operation> checkedOperations() {
    std::vector<Operation> checked = operations();
    checked.erase(std::remove_if(checked.begin(), checked.end(),
                                 [](const Operation& operation) {
                                     return operation.name == "open" ||
                                            operation.name == "create" ||
                                            operation.name == "hasSubKey";
                                 }),
                  checked.end());
    return checked;
}

const Operation& operationNamed(const std::string& name) {
    for (const Operation& operation : operations()) {
        if (operation.name == name) {
            return operation;
        }
    }
    throw std::invalid_argument(name);
}

void arrange(SimulatedRegistry& platform) {
    for (const char* const path : {"node", "other"}) {
        const RegistryKey::Pointer key = platform.user().make(path);
        key->setValue("number", REG_DWORD, std::string("\7\0\0\0", 4));
        key->setValue("text", REG_SZ, std::string("text\0", 5));
        key->make("sub")->setValue("deep", REG_BINARY, "deep");
        key->make("sub\\below\\lowest");
        key->make("second");
    }
}

} // namespace support
