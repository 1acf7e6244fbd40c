#include "ZOL/RegistryAccess/Registry.h"

#include <algorithm>

#include "ZOL/RegistryAccess/HandleHolder.h"
#include "ZOL/RegistryAccess/NativeText.h"
#include "ZOL/RegistryAccess/ThrowSite.h"
#include "ZOL/RegistryAccess/ValueEnumeration.h"

namespace ZOL::RegistryAccess {

std::vector<Registry> Registry::getSubKeys() const {
    checkHandle(handle_, 538);
    std::vector<Registry> subKeys;
    for (DWORD index = 0;; ++index) {
        EnumerationBuffer name{};
        const LONG result =
            RegEnumKeyA(handle_->key, index, name.data(), static_cast<DWORD>(name.size()));
        switch (result) {
        case ERROR_SUCCESS:
            break;
        case ERROR_NO_MORE_ITEMS:
            return subKeys;
        case ERROR_ACCESS_DENIED:
            throw AccessDenied("Not enough permissions to read sub key enumeration.", throwFile,
                               561);
        default:
            throw OpenError("Unable to open enumerated sub key.", throwFile, 569);
        }
        // The platform does not return the length, and a full buffer has no terminating zero.
        const auto end = std::find(name.begin(), name.end(), '\0');
        subKeys.push_back(openSubKey(fromNative(std::string(name.begin(), end))));
    }
}

void Registry::copyValuesFrom(const Registry& otherNode) {
    if (handle_ == nullptr || otherNode.handle_ == nullptr) {
        raiseCheckFailure<NotInitialized>("handle_ != 0 && otherNode.handle_ != 0",
                                          "Invalid handle state.", throwFile, 656);
    }
    for (DWORD index = 0;; ++index) {
        EnumeratedValue value;
        if (value.read(otherNode.handle_->key, index) != ERROR_SUCCESS) {
            return;
        }
        const LONG result =
            RegSetValueExA(handle_->key, toNative(value.name()).c_str(), 0, value.type,
                           reinterpret_cast<const BYTE*>(value.data.data()), value.dataSize);
        if (result != ERROR_SUCCESS) {
            return;
        }
    }
}

void Registry::copyFrom(const Registry& otherNode) {
    copyValuesFrom(otherNode);
    const std::vector<Registry> subKeys = otherNode.getSubKeys();
    for (const Registry& subKey : subKeys) {
        createSubKey(subKey.getName()).copyFrom(subKey);
    }
}

} // namespace ZOL::RegistryAccess
