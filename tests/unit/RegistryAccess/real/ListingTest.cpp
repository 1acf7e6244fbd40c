// Listings of sub keys, on the real registry.

#include <algorithm>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ErrorExpectation.h"
#include "RegistryFixture.h"

using support::expectError;
using ZOL::RegistryAccess::Registry;

namespace {

class RegistryListing : public support::RegistryFixture {};

std::vector<std::string> namesOf(const std::vector<Registry>& nodes) {
    std::vector<std::string> names;
    names.reserve(nodes.size());
    for (const Registry& node : nodes) {
        names.push_back(node.getName());
    }
    return names;
}

TEST_F(RegistryListing, OfAKeyWithoutSubKeysIsEmpty) {
    Registry node = make();
    node.updateIntValue("a value", 1);
    EXPECT_TRUE(node.getSubKeys().empty());
}

TEST_F(RegistryListing, HasEachDirectSubKeyOnce) {
    make("a\\below");
    make("b");
    make("c");
    std::vector<std::string> names = namesOf(make().getSubKeys());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, (std::vector<std::string>{"a", "b", "c"}));
}

TEST_F(RegistryListing, HasTheOrderOfThePlatform) {
    for (const char* const name : {"m", "a", "z", "B", "c"}) {
        make(name);
    }
    std::vector<std::string> names;
    HKEY key = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, path().c_str(), &key), ERROR_SUCCESS);
    char name[300] = {};
    for (DWORD i = 0; RegEnumKeyA(key, i, name, sizeof(name)) == ERROR_SUCCESS; ++i) {
        names.emplace_back(name);
    }
    RegCloseKey(key);
    ASSERT_EQ(names.size(), 5U);
    EXPECT_EQ(namesOf(make().getSubKeys()), names);
}

TEST_F(RegistryListing, GivesTheNamesAsTheKeysAreSpelled) {
    make("Spelled");
    make("sPELLED");
    EXPECT_EQ(namesOf(make().getSubKeys()), std::vector<std::string>{"Spelled"});
}

TEST_F(RegistryListing, ItsNodesWorkAndOutliveTheListingNode) {
    make("a").updateIntValue("mark", 1);
    make("b").updateIntValue("mark", 2);
    std::vector<Registry> nodes;
    {
        const Registry node = make();
        nodes = node.getSubKeys();
    }
    ASSERT_EQ(nodes.size(), 2U);
    for (Registry& node : nodes) {
        EXPECT_EQ(node.getIntValue("mark"), node.getName() == "a" ? 1 : 2);
        EXPECT_EQ(node.createSubKey("below").getName(), "below");
    }
    EXPECT_TRUE(make().hasSubKey("a\\below"));
}

TEST_F(RegistryListing, ItsNodesOutliveTheListing) {
    make("a").updateIntValue("mark", 1);
    Registry kept;
    kept = make().getSubKeys().front();
    EXPECT_EQ(kept.getIntValue("mark"), 1);
}

TEST_F(RegistryListing, HasTheLongestNameThatThePlatformAllows) {
    const std::string longest(255, 'n');
    make().createSubKey(longest);
    EXPECT_EQ(namesOf(make().getSubKeys()), std::vector<std::string>{longest});
}

TEST_F(RegistryListing, AShortNameHasNothingLeftOfALongOneBeforeIt) {
    Registry node = make();
    node.createSubKey("a" + std::string(200, 'n'));
    node.createSubKey("b");
    EXPECT_EQ(namesOf(node.getSubKeys()).back(), "b");
}

TEST_F(RegistryListing, IsCompleteForAThousandSubKeys) {
    std::vector<std::string> expected;
    Registry node = make();
    for (int i = 1000; i < 2000; ++i) {
        expected.push_back(std::to_string(i));
        node.createSubKey(expected.back());
    }
    std::vector<std::string> names = namesOf(node.getSubKeys());
    std::sort(names.begin(), names.end());
    EXPECT_EQ(names, expected);
}

TEST_F(RegistryListing, EndsAtANameThatTheAnsiCodePageLacks) {
    // The platform puts a question mark for it, and there is no key of that name.
    make("a");
    HKEY key = nullptr;
    HKEY subKey = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, path().c_str(), &key), ERROR_SUCCESS);
    ASSERT_EQ(RegCreateKeyW(key, L"b\x2603", &subKey), ERROR_SUCCESS);
    RegCloseKey(subKey);
    RegCloseKey(key);
    const Registry node = make();
    expectError<Registry::OpenError>(608, "Unable to open requested key.",
                                     [&] { node.getSubKeys(); });
}

} // namespace
