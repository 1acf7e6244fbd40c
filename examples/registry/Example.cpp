// Keeps the settings of a shop below a key of its own, copies and lists them, shows what an error
// says, and removes the key.

#include <exception>
#include <iostream>
#include <string>

#include "ZOL/RegistryAccess/Registry.h"

using ZOL::RegistryAccess::Registry;

namespace {

/// A key below HKEY_CURRENT_USER\Software, new for each process and removed with the object.
class OwnKey {
public:
    OwnKey()
        : name_("ZOL_Framework example." + std::to_string(GetCurrentProcessId())),
          node_(Registry::create(HKEY_CURRENT_USER, "Software\\" + name_)) {}
    OwnKey(const OwnKey&) = delete;
    OwnKey& operator=(const OwnKey&) = delete;
    ~OwnKey() {
        try {
            Registry software = Registry::open(HKEY_CURRENT_USER, "Software");
            software.deleteSubKey(name_); // with everything below it
            std::cout << (software.hasSubKey(name_) ? "the key is left\n" : "the key is removed\n");
        } catch (const Registry::GenericRegistryError& error) {
            std::cerr << name_ << " is left in the registry: " << error.what() << '\n';
        }
    }

    Registry& node() { return node_; }

private:
    std::string name_;
    Registry node_;
};

void writeSettings(Registry& settings) {
    settings.updateIntValue("number", 2);
    const std::string title = "Shop";
    Registry window = settings.createSubKey("window");
    window.updateIntValue("number", 800);
    window.updateStringValue("text",
                             {title.c_str(), title.c_str() + title.size() + 1}); // with its zero
    settings.createSubKey("printer").createSubKey("paper");
}

void list(const Registry& node, const std::string& indent) {
    std::cout << indent << node.getName();
    if (node.hasValue("number")) { // a missing value is an exception
        std::cout << " number=" << node.getIntValue("number");
    }
    if (node.hasValue("text")) {
        const Registry::Bytes text = node.getStringValue("text"); // without the zero
        std::cout << " text=" << std::string(text.begin(), text.end());
    }
    std::cout << '\n';
    for (const Registry& subKey : node.getSubKeys()) {
        list(subKey, indent + "  ");
    }
}

void showError(Registry& node) {
    try {
        node.deleteSubKey("missing");
    } catch (const Registry::NotFound& error) {
        std::cout << "error: " << error.message() << '\n';
    }
}

} // namespace

int main() {
    try {
        OwnKey key;
        Registry settings = key.node().createSubKey("settings");
        writeSettings(settings);
        Registry copy = key.node().createSubKey("copy");
        copy.copyFrom(settings);
        list(copy, "");
        showError(copy);
    } catch (const Registry::GenericRegistryError& error) { // it has no base class
        std::cerr << "RegistryExample: " << error.what() << '\n';
        return 1;
    }
    return 0;
}
