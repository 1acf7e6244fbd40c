#include "ZOL/RegistryAccess/NativeText.h"

namespace ZOL::RegistryAccess {

std::string toNative(const std::string& text) {
    return text;
}

std::string fromNative(const std::string& text) {
    return text;
}

std::string fromWide(const std::wstring&) {
    return {};
}

std::string lastPathComponent(const std::string& path) {
    const std::string::size_type separator = path.rfind('\\');
    return separator == std::string::npos ? path : path.substr(separator + 1);
}

} // namespace ZOL::RegistryAccess
