// The examples of registry.md, with what the document says of them.

#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "ZOL/RegistryAccess/Registry.h"

using ZOL::RegistryAccess::Registry;

namespace {

TEST(RegistryDocument, Example) {
#include "registry_example.inc"
    EXPECT_EQ(width, 800);
    EXPECT_EQ(shown, "Shop");
    EXPECT_EQ(names, "window\n");
    EXPECT_EQ(reason, "Unable to delete given key.");
    EXPECT_THROW(Registry::open(HKEY_CURRENT_USER, home), Registry::OpenError);
}

TEST(RegistryDocument, LineOfAnError) {
    std::ifstream file(WHAT_FILE);
    std::string shown;
    std::getline(file, shown);
    try {
        Registry::open(HKEY_CURRENT_USER, "Software").deleteSubKey("ZOL_Framework no such key");
        FAIL() << "deleted what was not there";
    } catch (const Registry::NotFound& error) {
        EXPECT_EQ(error.what(), shown);
    }
}

TEST(RegistryDocument, Assignment) {
    const std::string name = "ZOL_Framework docs." + std::to_string(GetCurrentProcessId());
    const std::string path = "Software\\" + name;
#include "registry_assignment.inc"
    EXPECT_EQ(node.getName(), name);
    EXPECT_EQ(below.getName(), "below");
    Registry::open(HKEY_CURRENT_USER, "Software").deleteSubKey(name);
}

TEST(RegistryDocument, Text) {
#include "registry_text.inc"
    EXPECT_EQ(utf8(""), "");
    EXPECT_EQ(utf8("Software\\Shop"), "Software\\Shop");
    const std::wstring word = L"Caf\u00e9";
    char ansi[16] = "";
    ASSERT_NE(
        WideCharToMultiByte(CP_ACP, 0, word.c_str(), -1, ansi, sizeof(ansi), nullptr, nullptr), 0);
    EXPECT_EQ(utf8(ansi), "Caf\xC3\xA9");
    EXPECT_STREQ(ansi, "Caf\xE9") << "else the code page does not differ from UTF-8";
}

} // namespace
