#include "SimulatedRegistry.h"

#include <cassert>
#include <tuple>
#include <utility>

namespace support {

namespace {

SimulatedRegistry* currentRegistry = nullptr;

} // namespace

SimulatedRegistry::SimulatedRegistry() {
    assert(currentRegistry == nullptr);
    currentRegistry = this;
}

SimulatedRegistry::~SimulatedRegistry() {
    currentRegistry = nullptr;
}

SimulatedRegistry& SimulatedRegistry::current() {
    assert(currentRegistry != nullptr);
    return *currentRegistry;
}

RegistryKey& SimulatedRegistry::root(HKEY predefined) {
    return *handles.resolve(predefined);
}

void SimulatedRegistry::answer(std::size_t n, LONG code) {
    answers_.emplace_back([n, code](const std::string&) mutable -> std::optional<LONG> {
        return n-- == 1 ? std::optional<LONG>(code) : std::nullopt;
    });
}

void SimulatedRegistry::answer(const std::string& function, std::size_t n, LONG code) {
    answers_.emplace_back(
        [function, n, code](const std::string& called) mutable -> std::optional<LONG> {
            return called == function && n-- == 1 ? std::optional<LONG>(code) : std::nullopt;
        });
}

void SimulatedRegistry::answerAll(const std::string& function, LONG code) {
    answers_.emplace_back([function, code](const std::string& called) {
        return called == function ? std::optional<LONG>(code) : std::nullopt;
    });
}

void SimulatedRegistry::answerTruly() {
    answers_.clear();
}

SimulatedRegistry::Lines SimulatedRegistry::takeCalls() {
    return std::exchange(log_, {});
}

std::optional<LONG> SimulatedRegistry::record(const std::string& function, const Lines& arguments) {
    ++calls_;
    std::string line = function + "(";
    for (const std::string& argument : arguments) {
        line += (line.back() == '(' ? "" : ", ") + argument;
    }
    log_.push_back(line + ")");
    std::optional<LONG> ordered;
    for (Answer& answer : answers_) {
        if (const std::optional<LONG> code = answer(function)) {
            ordered = code;
        }
    }
    return ordered;
}

void SimulatedRegistry::misstate(DWORD& nameLength, DWORD& dataLength) const {
    if (misstated_) {
        std::tie(nameLength, dataLength) = *misstated_;
    }
}

RegistryKey::Pointer SimulatedRegistry::make(RegistryKey& parent, const std::string& path) {
    RegistryKey::Pointer key = parent.find(path);
    if (key != nullptr) {
        return key;
    }
    return user().count() < keyLimit_ ? parent.make(path) : nullptr;
}

} // namespace support
