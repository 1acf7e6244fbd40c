// One node and its key, on the real registry.

#include <new>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ErrorExpectation.h"
#include "RegistryFixture.h"

using support::expectError;
using ZOL::RegistryAccess::Registry;

namespace {

class RegistryNode : public support::RegistryFixture {};

TEST_F(RegistryNode, OpenedByAPathIsNamedAfterTheLastLevelAlone) {
    make("a\\b\\c");
    EXPECT_EQ(Registry::open(HKEY_CURRENT_USER, path("a\\b\\c")).getName(), "c");
}

TEST_F(RegistryNode, CreatedByAPathIsNamedAfterTheLastLevelAlone) {
    EXPECT_EQ(Registry::create(HKEY_CURRENT_USER, path("a\\b\\c")).getName(), "c");
}

TEST_F(RegistryNode, OpenedAsASubKeyIsNamedWithTheWholePath) {
    make("a\\b\\c");
    EXPECT_EQ(make().openSubKey("a\\b\\c").getName(), "a\\b\\c");
}

TEST_F(RegistryNode, CreatedAsASubKeyIsNamedWithTheWholePath) {
    EXPECT_EQ(make().createSubKey("a\\b\\c").getName(), "a\\b\\c");
}

TEST_F(RegistryNode, IsNamedAsAskedForAndNotAsTheKeyIsSpelled) {
    make("Spelled");
    EXPECT_EQ(Registry::open(HKEY_CURRENT_USER, path("sPELLED")).getName(), "sPELLED");
    EXPECT_EQ(make().openSubKey("SPELLED").getName(), "SPELLED");
}

TEST_F(RegistryNode, OpenedByAPathThatEndsInABackslashHasAnEmptyName) {
    make("a").updateIntValue("mark", 1);
    const Registry node = Registry::open(HKEY_CURRENT_USER, path("a\\"));
    EXPECT_EQ(node.getName(), "");
    EXPECT_EQ(node.getIntValue("mark"), 1);
}

TEST_F(RegistryNode, CreatedByAPathThatEndsInABackslashHasAnEmptyName) {
    const Registry node = Registry::create(HKEY_CURRENT_USER, path("a\\"));
    EXPECT_EQ(node.getName(), "");
    EXPECT_TRUE(make().hasSubKey("a"));
}

TEST_F(RegistryNode, OpensBelowAnyOpenKeyAsRoot) {
    make("a\\b").updateIntValue("mark", 7);
    HKEY root = nullptr;
    ASSERT_EQ(RegOpenKeyA(HKEY_CURRENT_USER, path("a").c_str(), &root), ERROR_SUCCESS);
    EXPECT_EQ(Registry::open(root, "b").getIntValue("mark"), 7);
    Registry::create(root, "c").updateIntValue("mark", 8);
    RegCloseKey(root);
    EXPECT_EQ(make("a\\c").getIntValue("mark"), 8);
}

TEST_F(RegistryNode, OpensTheOtherPredefinedRootsToo) {
    EXPECT_TRUE(Registry::open(HKEY_LOCAL_MACHINE, "Software").hasSubKey("Microsoft"));
    EXPECT_EQ(Registry::open(HKEY_CLASSES_ROOT, "CLSID").getName(), "CLSID");
}

TEST_F(RegistryNode, OpenOfAMissingPathIsAnOpenError) {
    expectError<Registry::OpenError>(286, "Unable to open requested key", [this] {
        Registry::open(HKEY_CURRENT_USER, path("missing"));
    });
}

TEST_F(RegistryNode, OpenMakesNothing) {
    make();
    EXPECT_THROW(Registry::open(HKEY_CURRENT_USER, path("missing")), Registry::OpenError);
    EXPECT_THROW(make().openSubKey("missing"), Registry::OpenError);
    EXPECT_TRUE(make().getSubKeys().empty());
}

TEST_F(RegistryNode, OpenSubKeyOfAMissingOneIsAnOpenError) {
    const Registry node = make();
    expectError<Registry::OpenError>(608, "Unable to open requested key.",
                                     [&] { node.openSubKey("missing"); });
}

TEST_F(RegistryNode, CreateMakesTheLevelsOnTheWay) {
    Registry::create(HKEY_CURRENT_USER, path("a\\b\\c"));
    const Registry node = make();
    EXPECT_TRUE(node.hasSubKey("a"));
    EXPECT_TRUE(node.hasSubKey("a\\b"));
    EXPECT_TRUE(node.hasSubKey("a\\b\\c"));
}

TEST_F(RegistryNode, CreateSubKeyMakesTheLevelsOnTheWay) {
    make().createSubKey("a\\b\\c");
    EXPECT_EQ(make("a\\b").getSubKeys().size(), 1U);
}

TEST_F(RegistryNode, CreateOpensAKeyThatIsThere) {
    make("a").updateIntValue("kept", 5);
    EXPECT_EQ(Registry::create(HKEY_CURRENT_USER, path("a")).getIntValue("kept"), 5);
    EXPECT_EQ(make().createSubKey("a").getIntValue("kept"), 5);
    EXPECT_EQ(make().getSubKeys().size(), 1U);
}

TEST_F(RegistryNode, CreateOfAKeyWhoseNameIsTooLongIsACreationError) {
    make();
    expectError<Registry::CreationError>(422, "Unable to create key.", [this] {
        Registry::create(HKEY_CURRENT_USER, path(std::string(300, 'n')));
    });
}

TEST_F(RegistryNode, CreateSubKeyWithANameTooLongIsACreationError) {
    Registry node = make();
    expectError<Registry::CreationError>(630, "Unable to create requested key.",
                                         [&] { node.createSubKey(std::string(300, 'n')); });
}

TEST_F(RegistryNode, HasSubKeyTellsWhatIsThere) {
    make("a\\b");
    const Registry node = make();
    EXPECT_TRUE(node.hasSubKey("a"));
    EXPECT_TRUE(node.hasSubKey("A")) << "the platform ignores case";
    EXPECT_TRUE(node.hasSubKey("a\\b"));
    EXPECT_FALSE(node.hasSubKey("b"));
}

TEST_F(RegistryNode, HasSubKeyDoesNotCountValues) {
    Registry node = make();
    node.updateIntValue("a", 1);
    EXPECT_FALSE(node.hasSubKey("a"));
}

TEST_F(RegistryNode, DeleteSubKeyTakesEverythingBelow) {
    make("a\\b\\c").updateIntValue("value", 1);
    make("a\\d").updateIntValue("value", 1);
    make("kept");
    make().deleteSubKey("a");
    EXPECT_FALSE(make().hasSubKey("a"));
    EXPECT_TRUE(make().hasSubKey("kept"));
}

TEST_F(RegistryNode, DeleteSubKeyTakesAPath) {
    make("a\\b\\c");
    make().deleteSubKey("a\\b");
    EXPECT_TRUE(make().hasSubKey("a"));
    EXPECT_FALSE(make().hasSubKey("a\\b"));
}

TEST_F(RegistryNode, DeleteSubKeyOfAMissingOneIsNotFound) {
    Registry node = make();
    expectError<Registry::NotFound>(443, "Unable to delete given key.",
                                    [&] { node.deleteSubKey("missing"); });
}

TEST_F(RegistryNode, WorksOnAfterAFailure) {
    Registry node = make();
    EXPECT_THROW(node.openSubKey("missing"), Registry::OpenError);
    EXPECT_THROW(node.deleteSubKey("missing"), Registry::NotFound);
    EXPECT_EQ(node.getName(), path().substr(path().rfind('\\') + 1));
    EXPECT_EQ(node.createSubKey("a").getName(), "a");
}

// Here two nodes own the same handle. The second destructor would close it again, or another key
// that got the same handle since, so these two tests leak one node.

TEST_F(RegistryNode, OpenSubKeyWithAnEmptyNameGivesTheKeyItself) {
    Registry node = make();
    node.updateIntValue("mark", 3);
    alignas(Registry) unsigned char storage[sizeof(Registry)];
    const auto* const same = new (storage) Registry(node.openSubKey(""));
    EXPECT_EQ(same->getName(), "");
    EXPECT_EQ(same->getIntValue("mark"), 3);
}

TEST_F(RegistryNode, EndsItsOwnKeyWithTheOneOpenedByAnEmptyName) {
    alignas(Registry) unsigned char storage[sizeof(Registry)];
    auto* const node = new (storage) Registry(make());
    node->updateIntValue("mark", 3);
    {
        // Destroyed at once.
        const Registry same = node->openSubKey("");
    }
    EXPECT_FALSE(node->hasValue("mark"));
    expectError<Registry::OpenError>(398, "Unable to open requested value.",
                                     [&] { node->getIntValue("mark"); });
}

TEST_F(RegistryNode, CreateSubKeyWithAnEmptyNameOpensTheKeyOnceMore) {
    Registry node = make();
    node.updateIntValue("mark", 3);
    {
        // Destroyed at once.
        EXPECT_EQ(node.createSubKey("").getIntValue("mark"), 3);
    }
    EXPECT_EQ(node.getIntValue("mark"), 3);
}

TEST_F(RegistryNode, PathsOverTheLengthOfAnsiCallsCannotBeOpenedInOneStep) {
    const std::string name(100, 'n');
    make(name).createSubKey(name).createSubKey(name);
    EXPECT_EQ(make(name).openSubKey(name).openSubKey(name).getName(), name);
    expectError<Registry::OpenError>(286, "Unable to open requested key", [&] {
        Registry::open(HKEY_CURRENT_USER, path(name + "\\" + name + "\\" + name));
    });
}

TEST_F(RegistryNode, CopiesShareTheKeyAndOutliveTheOriginal) {
    Registry copy;
    {
        Registry node = make("a");
        const Registry second(node);
        copy = second;
        node.updateIntValue("mark", 4);
        EXPECT_EQ(second.getIntValue("mark"), 4);
    }
    EXPECT_EQ(copy.getName(), "a");
    EXPECT_EQ(copy.getIntValue("mark"), 4);
}

TEST_F(RegistryNode, TheOriginalOutlivesItsCopies) {
    Registry node = make();
    {
        const std::vector<Registry> copies(3, node);
        Registry assigned;
        assigned = copies.front();
    }
    node.updateIntValue("mark", 4);
    EXPECT_EQ(node.getIntValue("mark"), 4);
}

TEST_F(RegistryNode, AssignmentTakesNameAndKeyOfTheOther) {
    make("a").updateIntValue("mark", 1);
    make("b").updateIntValue("mark", 2);
    Registry node = make("a");
    node = make("b");
    EXPECT_EQ(node.getName(), "b");
    EXPECT_EQ(node.getIntValue("mark"), 2);
}

TEST_F(RegistryNode, AssignedToItselfGoesOnWorking) {
    Registry node = make("a");
    const Registry& same = node;
    node = same;
    node.updateIntValue("mark", 1);
    EXPECT_EQ(node.getName(), "a");
    EXPECT_EQ(node.getIntValue("mark"), 1);
}

} // namespace
