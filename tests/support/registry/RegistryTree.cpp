#include "RegistryTree.h"

#include <algorithm>

#include "ShowText.h"

namespace support {

namespace {

char lower(char character) {
    return 'A' <= character && character <= 'Z' ? static_cast<char>(character - 'A' + 'a')
                                                : character;
}

bool isSameName(const std::string& one, const std::string& other) {
    return std::equal(one.begin(), one.end(), other.begin(), other.end(),
                      [](char a, char b) { return lower(a) == lower(b); });
}

std::vector<std::string> componentsOf(const std::string& path) {
    std::vector<std::string> components;
    std::string component;
    for (const char character : path + '\\') {
        if (character != '\\') {
            component += character;
        } else if (!component.empty()) {
            components.push_back(component);
            component.clear();
        }
    }
    return components;
}

} // namespace

RegistryValue* RegistryKey::findValue(const std::string& valueName) {
    const auto value = std::find_if(values.begin(), values.end(), [&](const RegistryValue& each) {
        return isSameName(each.name, valueName);
    });
    return value == values.end() ? nullptr : &*value;
}

void RegistryKey::setValue(const std::string& valueName, DWORD type, const std::string& data) {
    if (RegistryValue* const value = findValue(valueName)) {
        value->type = type;
        value->data = data;
    } else {
        values.push_back({valueName, type, data});
    }
}

bool RegistryKey::eraseValue(const std::string& valueName) {
    const auto end = std::remove_if(values.begin(), values.end(), [&](const RegistryValue& each) {
        return isSameName(each.name, valueName);
    });
    const bool found = end != values.end();
    values.erase(end, values.end());
    return found;
}

std::vector<RegistryKey::Pointer>::iterator RegistryKey::findSubKey(const std::string& subKeyName) {
    return std::find_if(subKeys.begin(), subKeys.end(),
                        [&](const Pointer& each) { return isSameName(each->name, subKeyName); });
}

RegistryKey::Pointer RegistryKey::find(const std::string& path) {
    RegistryKey* key = this;
    Pointer found;
    for (const std::string& component : componentsOf(path)) {
        const auto next = key->findSubKey(component);
        if (next == key->subKeys.end()) {
            return nullptr;
        }
        found = *next;
        key = found.get();
    }
    return found;
}

RegistryKey::Pointer RegistryKey::make(const std::string& path) {
    RegistryKey* key = this;
    Pointer made;
    for (const std::string& component : componentsOf(path)) {
        const auto next = key->findSubKey(component);
        if (next == key->subKeys.end()) {
            made = std::make_shared<RegistryKey>();
            made->name = component;
            key->subKeys.push_back(made);
        } else {
            made = *next;
        }
        key = made.get();
    }
    return made;
}

bool RegistryKey::erase(const std::string& path) {
    const std::vector<std::string> components = componentsOf(path);
    if (components.empty()) {
        return false;
    }
    RegistryKey* parent = this;
    for (std::size_t i = 0; i + 1 < components.size(); ++i) {
        const auto next = parent->findSubKey(components[i]);
        if (next == parent->subKeys.end()) {
            return false;
        }
        parent = next->get();
    }
    const auto key = parent->findSubKey(components.back());
    if (key == parent->subKeys.end()) {
        return false;
    }
    (*key)->markDeleted();
    parent->subKeys.erase(key);
    return true;
}

void RegistryKey::markDeleted() {
    deleted = true;
    for (const Pointer& subKey : subKeys) {
        subKey->markDeleted();
    }
    subKeys.clear();
    values.clear();
}

std::size_t RegistryKey::count() const {
    std::size_t sum = subKeys.size();
    for (const Pointer& subKey : subKeys) {
        sum += subKey->count();
    }
    return sum;
}

std::vector<std::string> RegistryKey::listing(const std::string& prefix) const {
    std::vector<std::string> lines;
    for (const RegistryValue& value : values) {
        lines.push_back(prefix + printable(value.name) + "=" + std::to_string(value.type) + ":" +
                        printable(value.data));
    }
    for (const Pointer& subKey : subKeys) {
        const std::string path = prefix + printable(subKey->name) + "\\";
        lines.push_back(path);
        for (std::string& line : subKey->listing(path)) {
            lines.push_back(std::move(line));
        }
    }
    return lines;
}

} // namespace support
