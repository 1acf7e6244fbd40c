#include "ZOL/RegistryAccess/Registry.h"

#include <shlwapi.h>

#include "ZOL/RegistryAccess/HandleHolder.h"
#include "ZOL/RegistryAccess/NativeText.h"
#include "ZOL/RegistryAccess/ThrowSite.h"

namespace ZOL::RegistryAccess {

Registry::Registry() : name_("NOT INITIALIZED!"), handle_(nullptr) {}

Registry::Registry(const Registry& other) : name_(other.name_), handle_(other.handle_) {
    handle_->addReference();
}

Registry& Registry::operator=(const Registry& other) {
    name_ = other.name_;
    handle_ = other.handle_; // no release of the old key, see the header
    handle_->addReference();
    return *this;
}

Registry::~Registry() {
    if (handle_ != nullptr) {
        handle_->release();
    }
}

Registry::Registry(const std::string& name, HandleHolder* handle) : name_(name), handle_(handle) {}

Registry Registry::adopt(const std::string& name, HKEY key) {
    HandleHolder* handle = nullptr;
    try {
        handle = new HandleHolder(key);
        return Registry(name, handle);
    } catch (...) { // out of memory: the key has no other owner
        if (handle != nullptr) {
            handle->release();
        } else {
            RegCloseKey(key);
        }
        throw;
    }
}

Registry Registry::open(HKEY root, const std::string& path) {
    const std::string name = lastPathComponent(path); // may throw, so before the key is open
    HKEY key = nullptr;
    const LONG result = RegOpenKeyA(root, toNative(path).c_str(), &key);
    switch (result) {
    case ERROR_SUCCESS:
        return adopt(name, key);
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Unable to open requested key", throwFile, 281);
    default:
        throw OpenError("Unable to open requested key", throwFile, 286);
    }
}

Registry Registry::create(HKEY root, const std::string& path) {
    const std::string name = lastPathComponent(path); // may throw, so before the key is open
    HKEY key = nullptr;
    const LONG result = RegCreateKeyA(root, toNative(path).c_str(), &key);
    switch (result) {
    case ERROR_SUCCESS:
        return adopt(name, key);
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Not enough permissions to create key.", throwFile, 417);
    default:
        throw CreationError("Unable to create key.", throwFile, 422);
    }
}

std::string Registry::getName() const {
    return name_;
}

bool Registry::hasSubKey(const std::string& name) const {
    HKEY key = nullptr;
    const LONG result = RegOpenKeyA(handle_->key, toNative(name).c_str(), &key);
    RegCloseKey(key); // also if no key was opened
    return result == ERROR_SUCCESS;
}

Registry Registry::openSubKey(const std::string& name) const {
    checkHandle(handle_, 595);
    HKEY key = nullptr;
    const LONG result = RegOpenKeyA(handle_->key, toNative(name).c_str(), &key);
    switch (result) {
    case ERROR_SUCCESS:
        return adopt(name, key);
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Not enough permissions to read requested key.", throwFile, 603);
    default:
        throw OpenError("Unable to open requested key.", throwFile, 608);
    }
}

Registry Registry::createSubKey(const std::string& name) {
    checkHandle(handle_, 617);
    HKEY key = nullptr;
    const LONG result = RegCreateKeyA(handle_->key, toNative(name).c_str(), &key);
    switch (result) {
    case ERROR_SUCCESS:
        return adopt(name, key);
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Not enough permissions to create requested key.", throwFile, 625);
    default:
        throw CreationError("Unable to create requested key.", throwFile, 630);
    }
}

void Registry::deleteSubKey(const std::string& name) {
    checkHandle(handle_, 431);
    const auto result = static_cast<LONG>(SHDeleteKeyA(handle_->key, toNative(name).c_str()));
    switch (result) {
    case ERROR_SUCCESS:
        return;
    case ERROR_ACCESS_DENIED:
        throw AccessDenied("Not enough permissions to delete sub key.", throwFile, 438);
    default:
        throw NotFound("Unable to delete given key.", throwFile, 443);
    }
}

} // namespace ZOL::RegistryAccess
