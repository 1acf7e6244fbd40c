#include "host/windows/ErrorShow.h"

#include <stdexcept>
#include <string>

#include <sddl.h>

using ZOL::RegistryAccess::Registry;

namespace Demo {

namespace {

template <typename Error, typename Operation>
void show(std::ostream& out, const char* attempt, Operation operation) {
    try {
        operation();
    } catch (const Error& error) {
        out << "  " << attempt << ":\n    " << error.what() << '\n';
        return;
    }
    throw std::runtime_error(std::string("this did not fail, but should have: ") + attempt);
}

/// A key that nobody has any rights to, for as long as the object lives.
class RefusingKey {
public:
    explicit RefusingKey(const KeyPath& place) {
        Registry::create(place.root, place.path);
        // With all rights, while there are some: it is the way back.
        if (RegOpenKeyExA(place.root, place.path.c_str(), 0, KEY_ALL_ACCESS, &key_) !=
            ERROR_SUCCESS) {
            throw std::runtime_error("cannot open " + place.text());
        }
        if (!setAccessList("D:")) {
            RegCloseKey(key_);
            throw std::runtime_error("cannot take the rights to " + place.text());
        }
    }
    RefusingKey(const RefusingKey&) = delete;
    RefusingKey& operator=(const RefusingKey&) = delete;
    ~RefusingKey() {
        setAccessList("D:(A;;KA;;;WD)");
        RegCloseKey(key_);
    }

private:
    bool setAccessList(const char* text) {
        PSECURITY_DESCRIPTOR security = nullptr;
        if (!ConvertStringSecurityDescriptorToSecurityDescriptorA(text, SDDL_REVISION_1, &security,
                                                                  nullptr)) {
            return false;
        }
        const LONG result = RegSetKeySecurity(key_, DACL_SECURITY_INFORMATION, security);
        LocalFree(security);
        return result == ERROR_SUCCESS;
    }

    HKEY key_ = nullptr;
};

} // namespace

void showErrors(std::ostream& out, DemoKey& key) {
    Registry& node = key.node();
    show<Registry::OpenError>(out, "opening a key that is not there",
                              [&] { node.openSubKey("missing"); });
    show<Registry::NotFound>(out, "reading a text that is not there",
                             [&] { node.getStringValue("missing"); });
    show<Registry::CreationError>(out, "making a key with a name of 300 characters",
                                  [&] { node.createSubKey(std::string(300, 'n')); });
    show<Registry::NotInitialized>(out, "reading with a node that was never given a key",
                                   [] { Registry().getIntValue("lines"); });
    const RefusingKey refusing(key.below("refusing"));
    show<Registry::AccessDenied>(out, "listing a key that grants no rights",
                                 [&] { node.openSubKey("refusing").getSubKeys(); });
}

} // namespace Demo
