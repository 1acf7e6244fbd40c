// What the built modules export, read from their files.

#include <sstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ModuleExports.h"

using surface::exportsOf;
using surface::moduleName;
using surface::readableExports;

namespace {

/// The class that type information or a virtual table belongs to, or the name itself.
std::string ownerOf(const std::string& name) {
    for (const std::string about : {"typeinfo for ", "typeinfo name for ", "vtable for "}) {
        if (name.rfind(about, 0) == 0) {
            return name.substr(about.size());
        }
    }
    return name;
}

TEST(Exports, AreNamesOfTheFrameworkOnly) {
    const std::vector<std::string> names = readableExports();
    ASSERT_FALSE(names.empty());
    for (const std::string& name : names) {
        EXPECT_EQ(ownerOf(name).rfind("ZOL::Framework::", 0), 0U) << "exported: " << name;
    }
}

TEST(Exports, ContainNoRegistryAccess) {
    for (const std::string& name : readableExports()) {
        EXPECT_EQ(name.find("Registry::"), std::string::npos) << "exported: " << name;
    }
}

TEST(Exports, ModuleIsLinkedByItsFileName) {
    EXPECT_EQ(exportsOf(moduleName).module, std::string(moduleName) + ZOL_MODULE_SUFFIX);
}

TEST(Exports, BackEndsExportOnlyTheirEntryPoint) {
    std::istringstream names(ZOL_BACKENDS);
    for (std::string name; std::getline(names, name, ',');) {
        EXPECT_EQ(exportsOf(name + "_r").names, std::vector<std::string>{"createBackend"}) << name;
    }
}

} // namespace
