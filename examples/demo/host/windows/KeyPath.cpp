#include "host/windows/KeyPath.h"

#include <stdexcept>

namespace Demo {

namespace {

bool isOneOf(const std::string& name, const char* first, const char* second) {
    return lstrcmpiA(name.c_str(), first) == 0 || lstrcmpiA(name.c_str(), second) == 0;
}

} // namespace

KeyPath parseKeyPath(const std::string& text) {
    const std::string::size_type separator = text.find('\\');
    const std::string root = text.substr(0, separator);
    const std::string path = separator == std::string::npos ? "" : text.substr(separator + 1);
    if (isOneOf(root, "HKCU", "HKEY_CURRENT_USER")) {
        return {HKEY_CURRENT_USER, "HKEY_CURRENT_USER", path};
    }
    if (isOneOf(root, "HKLM", "HKEY_LOCAL_MACHINE")) {
        return {HKEY_LOCAL_MACHINE, "HKEY_LOCAL_MACHINE", path};
    }
    if (isOneOf(root, "HKCR", "HKEY_CLASSES_ROOT")) {
        return {HKEY_CLASSES_ROOT, "HKEY_CLASSES_ROOT", path};
    }
    throw std::runtime_error("'" + text + "' is no key below HKCU, HKLM or HKCR");
}

} // namespace Demo
