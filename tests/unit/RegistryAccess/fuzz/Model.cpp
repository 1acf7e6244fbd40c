#include "Model.h"

#include <cstring>
#include <utility>

using support::RegistryKey;
using support::RegistryValue;

namespace fuzz {

namespace {

constexpr std::size_t longestName = 260;
constexpr std::size_t longestData = 261;

std::string lastComponent(const std::string& path) {
    std::string component;
    for (const char character : path) {
        if (character == '\\') {
            component.clear();
        } else {
            component += character;
        }
    }
    return component;
}

/// The platform includes the zero after a text in its data if there is one, and all texts of the
/// operations have one.
void store(RegistryKey& key, const std::string& name, DWORD type, std::string data) {
    const bool isText = type == REG_SZ || type == REG_EXPAND_SZ || type == REG_MULTI_SZ;
    if (isText && !data.empty() && data.back() != '\0') {
        data += '\0';
    }
    key.setValue(name, type, data);
}

} // namespace

Model::Cell::Cell(Model& model, RegistryKey::Pointer openKey)
    : key(std::move(openKey)), model_(model) {
    ++model_.openCells_;
}

Model::Cell::~Cell() {
    --model_.openCells_;
    model_.call(*key); // its result is ignored
}

void Model::failAt(std::size_t n, LONG code) {
    callsUntilFailure_ = n;
    failure_ = code;
}

std::size_t Model::takeClosesOfNothing() {
    return std::exchange(closesOfNothing_, 0);
}

LONG Model::call(const RegistryKey& key) {
    if (callsUntilFailure_ > 0 && --callsUntilFailure_ == 0) {
        return failure_;
    }
    return key.deleted ? ERROR_KEY_DELETED : ERROR_SUCCESS;
}

LONG Model::callOpen(RegistryKey& parent, const std::string& path, std::shared_ptr<Cell>& cell) {
    if (const LONG result = call(parent)) {
        return result;
    }
    const RegistryKey::Pointer key = parent.find(path);
    if (key == nullptr) {
        return ERROR_FILE_NOT_FOUND;
    }
    cell = std::make_shared<Cell>(*this, key);
    return ERROR_SUCCESS;
}

LONG Model::callCreate(RegistryKey& parent, const std::string& path, std::shared_ptr<Cell>& cell) {
    if (const LONG result = call(parent)) {
        return result;
    }
    if (parent.find(path) == nullptr && tree.count() >= keyLimit_) {
        return ERROR_NO_SYSTEM_RESOURCES;
    }
    cell = std::make_shared<Cell>(*this, parent.make(path));
    return ERROR_SUCCESS;
}

LONG Model::callEnumValue(const Node& node, std::size_t index) {
    const RegistryKey& key = *node.cell->key;
    if (const LONG result = call(key)) {
        return result;
    }
    if (index >= key.values.size()) {
        return ERROR_NO_MORE_ITEMS;
    }
    const RegistryValue& value = key.values[index];
    return value.name.size() > longestName || value.data.size() > longestData ? ERROR_MORE_DATA
                                                                              : ERROR_SUCCESS;
}

void Model::check(LONG result, const char* denied, const char* other) {
    check(result, denied, other, other);
}

void Model::check(LONG result, const char* denied, const char* noMoreItems, const char* other) {
    if (result == ERROR_ACCESS_DENIED) {
        throw Failure{denied};
    }
    if (result == ERROR_NO_MORE_ITEMS) {
        throw Failure{noMoreItems};
    }
    if (result != ERROR_SUCCESS) {
        throw Failure{other};
    }
}

void Model::checkOpen(const Node& node, int line) {
    if (node.cell == nullptr) {
        throw Failure{"NotInitialized " + std::to_string(line)};
    }
}

Model::Node Model::open(const std::string& path) {
    Node made{lastComponent(path), nullptr};
    check(callOpen(tree, path, made.cell), "AccessDenied 281", "OpenError 286");
    return made;
}

Model::Node Model::create(const std::string& path) {
    Node made{lastComponent(path), nullptr};
    check(callCreate(tree, path, made.cell), "AccessDenied 417", "CreationError 422");
    return made;
}

bool Model::hasSubKey(const Node& node, const std::string& name) {
    std::shared_ptr<Cell> cell;
    if (callOpen(*node.cell->key, name, cell) == ERROR_SUCCESS) {
        return true;
    }
    call(tree);
    ++closesOfNothing_;
    return false;
}

Model::Node Model::openSubKey(const Node& node, const std::string& name) {
    checkOpen(node, 595);
    Node made{name, nullptr};
    check(callOpen(*node.cell->key, name, made.cell), "AccessDenied 603", "OpenError 608");
    return made;
}

Model::Node Model::createSubKey(const Node& node, const std::string& name) {
    checkOpen(node, 617);
    Node made{name, nullptr};
    check(callCreate(*node.cell->key, name, made.cell), "AccessDenied 625", "CreationError 630");
    return made;
}

void Model::deleteSubKey(const Node& node, const std::string& name) {
    checkOpen(node, 431);
    LONG result = call(*node.cell->key);
    if (result == ERROR_SUCCESS && !node.cell->key->erase(name)) {
        result = ERROR_FILE_NOT_FOUND;
    }
    check(result, "AccessDenied 438", "NotFound 443");
}

bool Model::hasValue(const Node& node, const std::string& name) {
    checkOpen(node, 295);
    return call(*node.cell->key) == ERROR_SUCCESS && node.cell->key->findValue(name) != nullptr;
}

std::string Model::getStringValue(const Node& node, const std::string& name) {
    checkOpen(node, 314);
    for (std::size_t index = 0;; ++index) {
        check(callEnumValue(node, index), "AccessDenied 342", "NotFound 345", "OpenError 350");
        const RegistryValue& value = node.cell->key->values[index];
        if (value.name == name) {
            return value.data.substr(0, value.data.find('\0'));
        }
    }
}

std::int32_t Model::getIntValue(const Node& node, const std::string& name) {
    checkOpen(node, 374);
    LONG result = call(*node.cell->key);
    const RegistryValue* const value = node.cell->key->findValue(name);
    std::int32_t number = 0;
    if (result == ERROR_SUCCESS) {
        if (value == nullptr) {
            result = ERROR_FILE_NOT_FOUND;
        } else if (value->data.size() > sizeof(number)) {
            result = ERROR_MORE_DATA;
        }
    }
    check(result, "AccessDenied 390", "NotFound 393", "OpenError 398");
    if (value->type != REG_DWORD) {
        throw Failure{"OpenError 401"};
    }
    std::memcpy(&number, value->data.data(), value->data.size());
    return number;
}

void Model::updateStringValue(const Node& node, const std::string& name, const std::string& value) {
    checkOpen(node, 469);
    check(call(*node.cell->key), "AccessDenied 491", "NotFound 494", "OpenError 499");
    store(*node.cell->key, name, REG_SZ, value);
}

void Model::updateIntValue(const Node& node, const std::string& name, std::int32_t value) {
    checkOpen(node, 509);
    check(call(*node.cell->key), "AccessDenied 521", "NotFound 524", "OpenError 529");
    std::string data(sizeof(value), '\0');
    std::memcpy(data.data(), &value, sizeof(value));
    store(*node.cell->key, name, REG_DWORD, data);
}

void Model::deleteValue(const Node& node, const std::string& name) {
    checkOpen(node, 450);
    LONG result = call(*node.cell->key);
    if (result == ERROR_SUCCESS && !node.cell->key->eraseValue(name)) {
        result = ERROR_FILE_NOT_FOUND;
    }
    check(result, "AccessDenied 457", "NotFound 462");
}

std::vector<Model::Node> Model::getSubKeys(const Node& node) {
    checkOpen(node, 538);
    const RegistryKey& key = *node.cell->key;
    std::vector<Node> found;
    for (std::size_t index = 0;; ++index) {
        LONG result = call(key);
        if (result == ERROR_SUCCESS && index >= key.subKeys.size()) {
            result = ERROR_NO_MORE_ITEMS;
        }
        if (result == ERROR_NO_MORE_ITEMS) {
            return found;
        }
        if (result == ERROR_SUCCESS && key.subKeys[index]->name.size() > longestName) {
            result = ERROR_MORE_DATA;
        }
        check(result, "AccessDenied 561", "OpenError 569");
        found.push_back(openSubKey(node, key.subKeys[index]->name));
    }
}

void Model::copyValuesFrom(const Node& node, const Node& other) {
    if (other.cell == nullptr) {
        throw Failure{"NotInitialized 656"};
    }
    checkOpen(node, 656);
    for (std::size_t index = 0; callEnumValue(other, index) == ERROR_SUCCESS; ++index) {
        if (call(*node.cell->key) != ERROR_SUCCESS) {
            return;
        }
        const RegistryValue value = other.cell->key->values[index];
        store(*node.cell->key, value.name, value.type, value.data);
    }
}

void Model::copyFrom(const Node& node, const Node& other) {
    copyValuesFrom(node, other);
    for (const Node& subKey : getSubKeys(other)) {
        copyFrom(createSubKey(node, subKey.name), subKey);
    }
}

} // namespace fuzz
