#include "ZOL/RegistryAccess/Registry.h"

#include <algorithm>

#include "ZOL/RegistryAccess/HandleHolder.h"
#include "ZOL/RegistryAccess/NativeText.h"
#include "ZOL/RegistryAccess/ThrowSite.h"
#include "ZOL/RegistryAccess/ValueEnumeration.h"

namespace ZOL::RegistryAccess {

bool Registry::hasValue(const std::string& name) const {
    checkHandle(handle_, 295);
    return RegQueryValueExA(handle_->key, toNative(name).c_str(), nullptr, nullptr, nullptr,
                            nullptr) == ERROR_SUCCESS;
}

Registry::Bytes Registry::getStringValue(const std::string& name) const {
    checkHandle(handle_, 314);
    for (DWORD index = 0;; ++index) {
        EnumeratedValue value;
        const LONG result = value.read(handle_->key, index);
        switch (result) {
        case ERROR_SUCCESS:
            break;
        case ERROR_ACCESS_DENIED:
            throw AccessDenied("Not enough permissions to read value.", throwFile, 342);
        case ERROR_NO_MORE_ITEMS:
            throw NotFound("The requested value was not found.", throwFile, 345);
        default:
            throw OpenError("Unable to open requested value.", throwFile, 350);
        }
        if (value.name() == toNative(name)) {
            // Up to the first zero; the size that the platform returned is ignored.
            const auto end = std::find(value.data.begin(), value.data.end(), '\0');
            const std::string text = fromNative(std::string(value.data.begin(), end));
            return {text.begin(), text.end()};
        }
    }
}

std::int32_t Registry::getIntValue(const std::string& name) const {
    checkHandle(handle_, 374);
    DWORD type = 0;
    std::int32_t data = 0;
    DWORD size = sizeof(data);
    const LONG result = RegQueryValueExA(handle_->key, toNative(name).c_str(), nullptr, &type,
                                         reinterpret_cast<BYTE*>(&data), &size);
    switch (result) {
    case ERROR_SUCCESS:
        break;
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Not enough permissions to read value.", throwFile, 390);
    case ERROR_NO_MORE_ITEMS:
        throw NotFound("The requested value was not found.", throwFile, 393);
    default:
        throw OpenError("Unable to open requested value.", throwFile, 398);
    }
    if (type != REG_DWORD) {
        raiseCheckFailure<OpenError>(
            "type == REG_DWORD",
            "Only REG_DWORD value types are supported in getIntValue function.", throwFile, 401);
    }
    return data;
}

bool Registry::updateStringValue(const std::string& name, const Bytes& value) {
    checkHandle(handle_, 469);
    // The platform reads the byte after the data. A string has a zero there, a vector has no such
    // byte.
    const std::string text = toNative(std::string(value.begin(), value.end()));
    const LONG result = RegSetValueExA(handle_->key, toNative(name).c_str(), 0, REG_SZ,
                                       reinterpret_cast<const BYTE*>(text.c_str()),
                                       static_cast<DWORD>(value.size()));
    switch (result) {
    case ERROR_SUCCESS:
        return false;
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Not enough permissions to modify value.", throwFile, 491);
    case ERROR_NO_MORE_ITEMS:
        throw NotFound("The value to update was not found.", throwFile, 494);
    default:
        throw OpenError("Unable to open requested value.", throwFile, 499);
    }
}

bool Registry::updateIntValue(const std::string& name, std::int32_t value) {
    checkHandle(handle_, 509);
    const LONG result = RegSetValueExA(handle_->key, toNative(name).c_str(), 0, REG_DWORD,
                                       reinterpret_cast<const BYTE*>(&value), sizeof(value));
    switch (result) {
    case ERROR_SUCCESS:
        return false;
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Not enough permissions to modify value.", throwFile, 521);
    case ERROR_NO_MORE_ITEMS:
        throw NotFound("The value to update was not found.", throwFile, 524);
    default:
        throw OpenError("Unable to open requested value.", throwFile, 529);
    }
}

void Registry::deleteValue(const std::string& name) {
    checkHandle(handle_, 450);
    const LONG result = RegDeleteValueA(handle_->key, toNative(name).c_str());
    switch (result) {
    case ERROR_SUCCESS:
        return;
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Not enough permissions to delete value.", throwFile, 457);
    default:
        throw NotFound("Unable to delete given value.", throwFile, 462);
    }
}

} // namespace ZOL::RegistryAccess
