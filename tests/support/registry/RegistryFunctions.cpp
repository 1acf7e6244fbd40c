// The platform's functions, over the current simulated registry.

#include <algorithm>
#include <cstring>

#include <shlwapi.h>
#include <windows.h>

#include "FailingAllocator.h"
#include "ShowText.h"
#include "SimulatedRegistry.h"

using support::HandleTable;
using support::printable;
using support::RegistryKey;
using support::RegistryValue;
using support::SimulatedRegistry;
using support::FailingAllocator::Pause;

namespace {

constexpr BYTE poisonByte = 0xEE;
constexpr DWORD poisonNumber = 0xEEEEEEEE;

std::string show(HKEY key) {
    return SimulatedRegistry::current().handles.show(key);
}

std::string show(DWORD number) {
    return std::to_string(number);
}

std::string show(const char* text) {
    return text == nullptr ? "null" : '"' + printable(text) + '"';
}

std::string show(const BYTE* data, DWORD size) {
    if (data == nullptr) {
        return "null";
    }
    return '"' + printable(std::string(reinterpret_cast<const char*>(data), size)) + '"';
}

std::string showOut(const void* place, const char* name) {
    return place == nullptr ? "null" : name;
}

std::string showSize(const DWORD* size) {
    return size == nullptr ? "null" : show(*size);
}

/// Looks at each byte, so that a size beyond the buffer shows under the address sanitizer.
std::string showBuffer(const void* buffer, DWORD size) {
    const auto* const bytes = static_cast<const char*>(buffer);
    const bool isClean = std::all_of(bytes, bytes + size, [](char byte) { return byte == '\0'; });
    return isClean ? "zeros" : "dirty";
}

void poison(HKEY* place) {
    if (SimulatedRegistry::current().poisonsKeys()) {
        *place = HandleTable::poison();
    }
}

void poison(DWORD* place) {
    if (place != nullptr) {
        *place = poisonNumber;
    }
}

void poison(void* buffer, DWORD size) {
    if (buffer != nullptr) {
        std::memset(buffer, poisonByte, size);
    }
}

/// Performs a call without a configured result on a valid key.
template <typename Action>
LONG onKey(const std::optional<LONG>& ordered, HKEY handle, Action action) {
    if (ordered && *ordered != ERROR_SUCCESS) {
        return *ordered;
    }
    const RegistryKey::Pointer key = SimulatedRegistry::current().handles.resolve(handle);
    if (key == nullptr) {
        return ERROR_INVALID_HANDLE;
    }
    return key->deleted ? ERROR_KEY_DELETED : action(*key);
}

/// An empty path opens the same handle that was passed.
template <typename Lookup>
LONG openKey(const char* function, HKEY parent, const char* path, HKEY* result, Lookup lookup) {
    SimulatedRegistry& registry = SimulatedRegistry::current();
    const auto ordered =
        registry.record(function, {show(parent), show(path), showOut(result, "key")});
    const LONG code = onKey(ordered, parent, [&](RegistryKey& key) {
        if (*path == '\0') {
            *result = parent;
            return ERROR_SUCCESS;
        }
        return lookup(key);
    });
    if (code != ERROR_SUCCESS) {
        poison(result);
    }
    return code;
}

bool isText(DWORD type) {
    return type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
}

bool putName(const std::string& name, char* buffer, DWORD size) {
    const bool terminates = SimulatedRegistry::current().terminates();
    if (name.size() + (terminates ? 1 : 0) > size) {
        return false;
    }
    // Without the rule for terminators, there is one all the same where there is room.
    std::memcpy(buffer, name.c_str(), std::min<std::size_t>(name.size() + 1, size));
    return true;
}

} // namespace

LONG RegOpenKeyA(HKEY parent, const char* path, HKEY* result) {
    const Pause pause;
    return openKey("RegOpenKeyA", parent, path, result, [&](RegistryKey& key) {
        const RegistryKey::Pointer found = key.find(path);
        if (found == nullptr) {
            return ERROR_FILE_NOT_FOUND;
        }
        *result = SimulatedRegistry::current().handles.open(found);
        return ERROR_SUCCESS;
    });
}

LONG RegCreateKeyA(HKEY parent, const char* path, HKEY* result) {
    const Pause pause;
    return openKey("RegCreateKeyA", parent, path, result, [&](RegistryKey& key) {
        const RegistryKey::Pointer made = SimulatedRegistry::current().make(key, path);
        if (made == nullptr) {
            return ERROR_NO_SYSTEM_RESOURCES;
        }
        *result = SimulatedRegistry::current().handles.open(made);
        return ERROR_SUCCESS;
    });
}

LONG RegCloseKey(HKEY key) {
    const Pause pause;
    SimulatedRegistry& registry = SimulatedRegistry::current();
    const auto ordered = registry.record("RegCloseKey", {show(key)});
    const LONG code = registry.handles.close(key) ? ERROR_SUCCESS : ERROR_INVALID_HANDLE;
    return ordered.value_or(code);
}

LONG RegQueryValueExA(HKEY key, const char* name, DWORD* reserved, DWORD* type, BYTE* data,
                      DWORD* size) {
    const Pause pause;
    const auto ordered = SimulatedRegistry::current().record(
        "RegQueryValueExA", {show(key), show(name), showOut(reserved, "reserved"),
                             showOut(type, "type"), showOut(data, "data"), showSize(size)});
    const DWORD room = size != nullptr ? *size : 0;
    const RegistryValue* value = nullptr;
    const LONG code = onKey(ordered, key, [&](RegistryKey& found) {
        value = found.findValue(name);
        if (value == nullptr) {
            return ERROR_FILE_NOT_FOUND;
        }
        if (data == nullptr) {
            return ERROR_SUCCESS;
        }
        if (size == nullptr) {
            return ERROR_INVALID_PARAMETER;
        }
        return value->data.size() > room ? ERROR_MORE_DATA : ERROR_SUCCESS;
    });
    poison(type);
    poison(size);
    if (value != nullptr) {
        if (type != nullptr) {
            *type = value->type;
        }
        if (size != nullptr) {
            *size = static_cast<DWORD>(value->data.size());
        }
    }
    if (code != ERROR_SUCCESS) {
        poison(data, room);
    } else if (data != nullptr && value != nullptr) {
        std::copy(value->data.begin(), value->data.end(), data);
    }
    return code;
}

LONG RegSetValueExA(HKEY key, const char* name, DWORD reserved, DWORD type, const BYTE* data,
                    DWORD size) {
    const Pause pause;
    const auto ordered = SimulatedRegistry::current().record(
        "RegSetValueExA",
        {show(key), show(name), show(reserved), show(type), show(data, size), show(size)});
    return onKey(ordered, key, [&](RegistryKey& found) {
        std::string bytes(reinterpret_cast<const char*>(data), size);
        if (isText(type) && size > 0) {
            // The terminator that callers forget to count: the byte after the data is read.
            const BYTE next = data[size];
            if (bytes.back() != '\0' && next == 0) {
                bytes.push_back('\0');
            }
        }
        found.setValue(name, type, bytes);
        return ERROR_SUCCESS;
    });
}

LONG RegDeleteValueA(HKEY key, const char* name) {
    const Pause pause;
    const auto ordered =
        SimulatedRegistry::current().record("RegDeleteValueA", {show(key), show(name)});
    return onKey(ordered, key, [&](RegistryKey& found) {
        return found.eraseValue(name) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    });
}

LONG RegEnumKeyA(HKEY key, DWORD index, char* name, DWORD size) {
    const Pause pause;
    const auto ordered = SimulatedRegistry::current().record(
        "RegEnumKeyA", {show(key), show(index), showBuffer(name, size), show(size)});
    const LONG code = onKey(ordered, key, [&](RegistryKey& found) {
        if (index >= found.subKeys.size()) {
            return ERROR_NO_MORE_ITEMS;
        }
        return putName(found.subKeys[index]->name, name, size) ? ERROR_SUCCESS : ERROR_MORE_DATA;
    });
    if (code != ERROR_SUCCESS) {
        poison(name, size);
    }
    return code;
}

LONG RegEnumValueA(HKEY key, DWORD index, char* name, DWORD* nameSize, DWORD* reserved, DWORD* type,
                   BYTE* data, DWORD* dataSize) {
    const Pause pause;
    const DWORD nameRoom = *nameSize;
    const DWORD dataRoom = *dataSize;
    const auto ordered = SimulatedRegistry::current().record(
        "RegEnumValueA", {show(key), show(index), showBuffer(name, nameRoom), show(nameRoom),
                          showOut(reserved, "reserved"), showOut(type, "type"),
                          showBuffer(data, dataRoom), show(dataRoom)});
    const RegistryValue* value = nullptr;
    const LONG code = onKey(ordered, key, [&](RegistryKey& found) {
        if (index >= found.values.size()) {
            return ERROR_NO_MORE_ITEMS;
        }
        value = &found.values[index];
        const bool fits = value->data.size() <= dataRoom && putName(value->name, name, nameRoom);
        return fits ? ERROR_SUCCESS : ERROR_MORE_DATA;
    });
    if (code != ERROR_SUCCESS) {
        poison(name, nameRoom);
        poison(nameSize);
        poison(type);
        poison(data, dataRoom);
        poison(dataSize);
    }
    if (value != nullptr) {
        *nameSize = static_cast<DWORD>(value->name.size());
        *type = value->type;
        *dataSize = static_cast<DWORD>(value->data.size());
        if (code == ERROR_SUCCESS) {
            std::copy(value->data.begin(), value->data.end(), data);
            SimulatedRegistry::current().misstate(*nameSize, *dataSize);
        }
    }
    return code;
}

LONG SHDeleteKeyA(HKEY parent, const char* path) {
    const Pause pause;
    const auto ordered =
        SimulatedRegistry::current().record("SHDeleteKeyA", {show(parent), show(path)});
    return onKey(ordered, parent, [&](RegistryKey& key) {
        return key.erase(path) ? ERROR_SUCCESS : ERROR_FILE_NOT_FOUND;
    });
}
