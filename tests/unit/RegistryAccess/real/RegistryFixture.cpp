#include "RegistryFixture.h"

#include <iomanip>
#include <ostream>
#include <stdexcept>

#include <sddl.h>
#include <shlwapi.h>

namespace support {

namespace {

/// No other test has it at the same time, in this process or another one.
std::string uniqueName() {
    static int count = 0;
    return "ZOL_Framework tests." + std::to_string(GetCurrentProcessId()) + "." +
           std::to_string(GetTickCount64()) + "." + std::to_string(++count);
}

void require(LONG result, const std::string& what) {
    if (result != ERROR_SUCCESS) {
        throw std::runtime_error(what + ": " + std::to_string(result));
    }
}

class RawKey {
public:
    RawKey(const std::string& path, REGSAM rights) {
        require(RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, rights, &key_),
                "cannot open " + path);
    }
    RawKey(const RawKey&) = delete;
    RawKey& operator=(const RawKey&) = delete;
    ~RawKey() { RegCloseKey(key_); }

    HKEY get() const { return key_; }

private:
    HKEY key_ = nullptr;
};

void setSecurity(HKEY key, SECURITY_INFORMATION parts, const char* text) {
    PSECURITY_DESCRIPTOR security = nullptr;
    if (!ConvertStringSecurityDescriptorToSecurityDescriptorA(text, SDDL_REVISION_1, &security,
                                                              nullptr)) {
        throw std::runtime_error(std::string("cannot read ") + text);
    }
    const LONG result = RegSetKeySecurity(key, parts, security);
    LocalFree(security);
    require(result, std::string("cannot protect a key with ") + text);
}

} // namespace

RegistryFixture::RegistryFixture() : path_("Software\\" + uniqueName()) {}

RegistryFixture::~RegistryFixture() {
    SHDeleteKeyA(HKEY_CURRENT_USER, path_.c_str());
    HKEY key = nullptr;
    const LONG result = RegOpenKeyA(HKEY_CURRENT_USER, path_.c_str(), &key);
    EXPECT_EQ(result, ERROR_FILE_NOT_FOUND) << "the test left a key";
    if (result == ERROR_SUCCESS) {
        RegCloseKey(key);
    }
}

Registry RegistryFixture::make() const {
    return Registry::create(HKEY_CURRENT_USER, path_);
}

Registry RegistryFixture::make(const std::string& below) const {
    return Registry::create(HKEY_CURRENT_USER, path(below));
}

Registry::Bytes bytes(const std::string& text) {
    return {text.begin(), text.end()};
}

Registry::Bytes withZero(const std::string& text) {
    return bytes(text + '\0');
}

bool operator==(const RawValue& left, const RawValue& right) {
    return left.type == right.type && left.data == right.data;
}

std::ostream& operator<<(std::ostream& out, const RawValue& value) {
    out << "type " << value.type << ", " << value.data.size() << " bytes:" << std::hex;
    for (const unsigned char byte : value.data) {
        out << ' ' << std::setw(2) << std::setfill('0') << static_cast<int>(byte);
    }
    return out << std::dec;
}

RawValue rawValue(const std::string& path, const std::string& name) {
    const RawKey key(path, KEY_QUERY_VALUE);
    RawValue value{0, std::string(70000, '?')};
    auto size = static_cast<DWORD>(value.data.size());
    require(RegQueryValueExA(key.get(), name.c_str(), nullptr, &value.type,
                             reinterpret_cast<BYTE*>(value.data.data()), &size),
            "cannot read the value " + name);
    value.data.resize(size);
    return value;
}

void setRawValue(const std::string& path, const std::string& name, const RawValue& value) {
    const RawKey key(path, KEY_SET_VALUE);
    // To a text without a terminating zero, the platform adds the byte after it if that is zero.
    const std::string data = value.data + '\1';
    require(RegSetValueExA(key.get(), name.c_str(), 0, value.type,
                           reinterpret_cast<const BYTE*>(data.data()),
                           static_cast<DWORD>(value.data.size())),
            "cannot write the value " + name);
}

std::string ansi(const std::wstring& text) {
    std::string converted(4 * text.size(), '\0');
    BOOL lacking = FALSE;
    const int length = WideCharToMultiByte(CP_ACP, WC_NO_BEST_FIT_CHARS, text.data(),
                                           static_cast<int>(text.size()), converted.data(),
                                           static_cast<int>(converted.size()), nullptr, &lacking);
    if (length <= 0 || lacking) {
        throw std::runtime_error("the ANSI code page lacks a character of this test");
    }
    converted.resize(static_cast<std::size_t>(length));
    return converted;
}

Refusal::Refusal(const std::string& path, What what) {
    // Kept open: it is the way back.
    require(RegOpenKeyExA(HKEY_CURRENT_USER, path.c_str(), 0, KEY_ALL_ACCESS, &key_),
            "cannot open " + path);
    switch (what) {
    case content:
        setSecurity(key_, DACL_SECURITY_INFORMATION, "D:");
        break;
    case changes:
        setSecurity(key_, DACL_SECURITY_INFORMATION, "D:(A;;KR;;;WD)");
        break;
    case opening:
        // An owner may always open; Windows itself wants a privilege for this change of owner.
        setSecurity(key_, OWNER_SECURITY_INFORMATION | DACL_SECURITY_INFORMATION, "O:SYD:");
        break;
    }
}

Refusal::~Refusal() {
    try {
        setSecurity(key_, DACL_SECURITY_INFORMATION, "D:(A;;KA;;;WD)");
    } catch (const std::runtime_error& error) {
        ADD_FAILURE() << error.what();
    }
    RegCloseKey(key_);
}

} // namespace support
