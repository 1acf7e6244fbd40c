#include "ModuleExports.h"

#include <algorithm>
#include <cctype>
#include <cstdlib>
#include <map>
#include <memory>

#include <cxxabi.h>

#include "Goldens.h"

namespace surface {

namespace {

/// What follows the parts of a nested name: "C1" of _ZN3ZOL9Framework12StringHolderC1Ev.
std::string markAfterNames(const std::string& mangled) {
    const std::string nested = "_ZN";
    if (mangled.compare(0, nested.size(), nested) != 0) {
        return {};
    }
    std::size_t at = nested.size();
    while (at < mangled.size() && std::isdigit(static_cast<unsigned char>(mangled[at])) != 0) {
        std::size_t digits = 0;
        const std::size_t length = std::stoul(mangled.substr(at), &digits);
        at += digits + length;
    }
    return at < mangled.size() ? mangled.substr(at, 2) : std::string();
}

/// Complete-object constructors of abstract classes: g++ emits them, clang does not, and nothing
/// can call them.
bool isUncallable(const std::string& name) {
    const std::string body = " [complete object]";
    const bool ofAbstractClass =
        name.find("::LoggerBackend::LoggerBackend(") != std::string::npos ||
        name.find("::LoggingChannel::LoggingChannel(") != std::string::npos;
    return ofAbstractClass && name.size() > body.size() &&
           name.compare(name.size() - body.size(), body.size(), body) == 0;
}

} // namespace

std::string readable(const std::string& mangled) {
    int status = 0;
    const std::unique_ptr<char, decltype(&std::free)> demangled(
        abi::__cxa_demangle(mangled.c_str(), nullptr, nullptr, &status), &std::free);
    if (status != 0) {
        return mangled;
    }
    static const std::map<std::string, const char*> bodies = {{"C1", " [complete object]"},
                                                              {"C2", " [base object]"},
                                                              {"D0", " [deleting]"},
                                                              {"D1", " [complete object]"},
                                                              {"D2", " [base object]"}};
    const auto body = bodies.find(markAfterNames(mangled));
    return std::string(demangled.get()) + (body != bodies.end() ? body->second : "");
}

std::vector<std::string> readableExports() {
    std::vector<std::string> names = exportsOf(moduleName).names;
    std::transform(names.begin(), names.end(), names.begin(), readable);
    return names;
}

std::vector<std::string> currentExports() {
    std::vector<std::string> names = readableExports();
    names.erase(std::remove_if(names.begin(), names.end(), isUncallable), names.end());
    return names;
}

} // namespace surface
