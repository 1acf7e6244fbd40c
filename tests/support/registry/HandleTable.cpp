#include "HandleTable.h"

#include <algorithm>
#include <utility>

namespace support {

HKEY HandleTable::poison() {
    return keyOfNumber(0xBADBAD);
}

HandleTable::HandleTable()
    : predefined_{{HKEY_CURRENT_USER, {"HKCU", std::make_shared<RegistryKey>()}},
                  {HKEY_LOCAL_MACHINE, {"HKLM", std::make_shared<RegistryKey>()}}} {}

HKEY HandleTable::open(const RegistryKey::Pointer& key) {
    const std::size_t number = opened_.size() + 1;
    const HKEY handle = keyOfNumber(static_cast<std::intptr_t>(0x1000 + 4 * number));
    opened_[handle] = {"k" + std::to_string(number), key};
    return handle;
}

RegistryKey::Pointer HandleTable::resolve(HKEY handle) {
    const auto root = predefined_.find(handle);
    if (root != predefined_.end()) {
        return root->second.key;
    }
    const auto entry = opened_.find(handle);
    if (entry == opened_.end()) {
        misuses_.push_back("use of " + show(handle) + ", which was never opened");
        return nullptr;
    }
    if (!entry->second.isOpen) {
        misuses_.push_back("use of " + show(handle) + ", which is closed");
        return nullptr;
    }
    return entry->second.key;
}

bool HandleTable::close(HKEY handle) {
    if (predefined_.count(handle) > 0) {
        return true;
    }
    const auto entry = opened_.find(handle);
    if (entry == opened_.end()) {
        misuses_.push_back("close of " + show(handle) + ", which was never opened");
        return false;
    }
    if (!entry->second.isOpen) {
        misuses_.push_back("close of " + show(handle) + ", which is closed");
        return false;
    }
    entry->second.isOpen = false;
    entry->second.key.reset();
    return true;
}

std::string HandleTable::show(HKEY handle) const {
    if (handle == nullptr) {
        return "null";
    }
    if (handle == poison()) {
        return "poison";
    }
    for (const auto* table : {&predefined_, &opened_}) {
        const auto entry = table->find(handle);
        if (entry != table->end()) {
            return entry->second.name;
        }
    }
    return "unknown";
}

std::size_t HandleTable::openHandles() const {
    return static_cast<std::size_t>(std::count_if(
        opened_.begin(), opened_.end(), [](const auto& entry) { return entry.second.isOpen; }));
}

std::vector<std::string> HandleTable::takeMisuses() {
    return std::exchange(misuses_, {});
}

} // namespace support
