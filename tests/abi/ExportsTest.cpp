// What the built modules offer to the loader, read from their export tables.

#include <algorithm>
#include <cstdlib>
#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Golden.h"
#include "ModuleSurface.h"

using boundary::expectGolden;
using boundary::ModuleSurface;
using boundary::readable;
using boundary::surfaceOf;

namespace {

constexpr const char* moduleName = "ZOL_Framework_r.2.0.8.129";

std::vector<std::string> readableExportsOf(const char* module) {
    std::vector<std::string> names = surfaceOf(module).exports;
    std::transform(names.begin(), names.end(), names.begin(), readable);
    return names;
}

/// Clang does not build the complete-object constructors of abstract classes, and nothing can call
/// them where g++ does.
bool isOfNoUse(const std::string& name) {
    const std::string body = " [complete object]";
    const bool ofAbstractClass =
        name.find("::LoggerBackend::LoggerBackend(") != std::string::npos ||
        name.find("::LoggingChannel::LoggingChannel(") != std::string::npos;
    return ofAbstractClass && name.size() > body.size() &&
           name.compare(name.size() - body.size(), body.size(), body) == 0;
}

/// The name without what the compiler says about a class.
std::string ownerOf(const std::string& name) {
    for (const std::string about : {"typeinfo for ", "typeinfo name for ", "vtable for "}) {
        if (name.rfind(about, 0) == 0) {
            return name.substr(about.size());
        }
    }
    return name;
}

TEST(Exports, OfTheModuleAreThoseOfTheStoredList) {
    std::vector<std::string> names = readableExportsOf(moduleName);
    names.erase(std::remove_if(names.begin(), names.end(), isOfNoUse), names.end());
    const char* const otherList = std::getenv("ZOL_EXPORTS_LIST");
    expectGolden(otherList != nullptr ? otherList : ZOL_EXPORTS_LIST, names);
}

TEST(Exports, HoldNothingOfBoostOrTheStandardLibrary) {
    const std::vector<std::string> names = readableExportsOf(moduleName);
    ASSERT_FALSE(names.empty());
    for (const std::string& name : names) {
        EXPECT_EQ(ownerOf(name).rfind("ZOL::Framework::", 0), 0U) << "exported: " << name;
    }
}

TEST(Exports, HoldNothingOfTheRegistry) {
    for (const std::string& name : readableExportsOf(moduleName)) {
        EXPECT_EQ(name.find("Registry::"), std::string::npos) << "exported: " << name;
    }
}

TEST(Exports, AreAskedForByTheFileNameOfTheModule) {
    EXPECT_EQ(surfaceOf(moduleName).name, std::string(moduleName) + ZOL_MODULE_SUFFIX);
}

TEST(Exports, OfABackEndAreItsEntryPointAlone) {
    std::istringstream names(ZOL_BACKENDS);
    for (std::string name; std::getline(names, name, ',');) {
        EXPECT_EQ(surfaceOf(name + "_r").exports, std::vector<std::string>{"createBackend"})
            << name;
    }
}

} // namespace
