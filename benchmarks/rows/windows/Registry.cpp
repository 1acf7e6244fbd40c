#include <cstdint>
#include <stdexcept>
#include <string>
#include <vector>

#include "ZOL/RegistryAccess/Registry.h"

#include "../Rows.h"

using ZOL::RegistryAccess::Registry;

namespace benchmarks {

namespace {

constexpr Workload openKey = {"registry, key opened and closed", 100};
constexpr Workload readText = {"registry, text read", 100};
constexpr Workload readNumber = {"registry, number read", 100};
constexpr Workload listKeys = {"registry, ten sub keys listed, each opened", 10};

constexpr int subKeys = 10;

const std::string& keyPath() {
    static const std::string path =
        "Software\\ZOL benchmarks " + std::to_string(GetCurrentProcessId());
    return path;
}

void makeKey() {
    Registry key = Registry::create(HKEY_CURRENT_USER, keyPath());
    key.updateStringValue("First", Registry::Bytes(40, 'a'));
    key.updateStringValue("Text", Registry::Bytes(40, 'b'));
    key.updateIntValue("Number", 42);
    for (int i = 0; i < subKeys; ++i) {
        key.createSubKey("Key " + std::to_string(i));
    }
}

void deleteKey() {
    RegDeleteTreeA(HKEY_CURRENT_USER, keyPath().c_str());
    RegDeleteKeyA(HKEY_CURRENT_USER, keyPath().c_str());
}

void require(LSTATUS status) {
    if (status != ERROR_SUCCESS) {
        throw std::runtime_error("a call into the registry failed: " + std::to_string(status));
    }
}

HKEY opened(HKEY root, const char* path) {
    HKEY key = nullptr;
    require(RegOpenKeyA(root, path, &key));
    return key;
}

void runOpenFloor(std::size_t n) {
    const char* const path = keyPath().c_str();
    for (std::size_t i = 0; i < n; ++i) {
        RegCloseKey(opened(HKEY_CURRENT_USER, path));
    }
}

void runOpen(std::size_t n) {
    for (std::size_t i = 0; i < n; ++i) {
        keep(Registry::open(HKEY_CURRENT_USER, keyPath()));
    }
}

void runTextFloor(std::size_t n) {
    HKEY const key = opened(HKEY_CURRENT_USER, keyPath().c_str());
    for (std::size_t i = 0; i < n; ++i) {
        unsigned char text[261];
        DWORD size = sizeof(text);
        require(RegQueryValueExA(key, "Text", nullptr, nullptr, text, &size));
        keep(Registry::Bytes(text, text + size));
    }
    RegCloseKey(key);
}

void runText(std::size_t n) {
    const Registry key = Registry::open(HKEY_CURRENT_USER, keyPath());
    const std::string name = "Text";
    for (std::size_t i = 0; i < n; ++i) {
        keep(key.getStringValue(name));
    }
}

void runNumberFloor(std::size_t n) {
    HKEY const key = opened(HKEY_CURRENT_USER, keyPath().c_str());
    for (std::size_t i = 0; i < n; ++i) {
        DWORD number = 0;
        DWORD size = sizeof(number);
        require(RegQueryValueExA(key, "Number", nullptr, nullptr,
                                 reinterpret_cast<unsigned char*>(&number), &size));
        keep(number);
    }
    RegCloseKey(key);
}

void runNumber(std::size_t n) {
    const Registry key = Registry::open(HKEY_CURRENT_USER, keyPath());
    const std::string name = "Number";
    for (std::size_t i = 0; i < n; ++i) {
        keep(key.getIntValue(name));
    }
}

void runListFloor(std::size_t n) {
    HKEY const key = opened(HKEY_CURRENT_USER, keyPath().c_str());
    for (std::size_t i = 0; i < n; ++i) {
        HKEY found[subKeys];
        for (DWORD k = 0; k < subKeys; ++k) {
            char name[256];
            require(RegEnumKeyA(key, k, name, sizeof(name)));
            found[k] = opened(key, name);
        }
        for (HKEY one : found) {
            RegCloseKey(one);
        }
    }
    RegCloseKey(key);
}

void runList(std::size_t n) {
    const Registry key = Registry::open(HKEY_CURRENT_USER, keyPath());
    for (std::size_t i = 0; i < n; ++i) {
        keep(key.getSubKeys());
    }
}

} // namespace

std::vector<Row> registryRows() {
    return {
        {openKey, Role::Floor, floorName, runOpenFloor, makeKey, deleteKey},
        {openKey, Role::Product, productName, runOpen, makeKey, deleteKey},
        {readText, Role::Floor, floorName, runTextFloor, makeKey, deleteKey},
        {readText, Role::Product, productName, runText, makeKey, deleteKey},
        {readNumber, Role::Floor, floorName, runNumberFloor, makeKey, deleteKey},
        {readNumber, Role::Product, productName, runNumber, makeKey, deleteKey},
        {listKeys, Role::Floor, floorName, runListFloor, makeKey, deleteKey},
        {listKeys, Role::Product, productName, runList, makeKey, deleteKey},
    };
}

} // namespace benchmarks
