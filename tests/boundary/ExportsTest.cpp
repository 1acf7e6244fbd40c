// What the built modules offer to the loader, read from their export tables.

#include <algorithm>
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
    expectGolden(std::string("exports.") + ZOL_PLATFORM + ".txt", readableExportsOf(moduleName));
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
    for (const char* const module : {"Console_r", "Good_r"}) {
        EXPECT_EQ(surfaceOf(module).exports, std::vector<std::string>{"createBackend"}) << module;
    }
}

} // namespace
