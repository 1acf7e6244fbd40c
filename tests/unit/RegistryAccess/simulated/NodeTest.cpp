// Nodes from a root and from other nodes: the platform calls and the node's name.

#include "NodeCell.h"
#include "RegistryTest.h"

using support::cellOf;

using support::Lines;
using support::summaryOf;
using support::thrownBy;
using ZOL::RegistryAccess::Registry;

namespace {

class Open : public support::RegistryTest {};

TEST_F(Open, OpensOnceAndClosesOnce) {
    platform.user().make("Software\\Sample");
    {
        // Destroyed at once.
        const Registry node = Registry::open(HKEY_CURRENT_USER, "Software\\Sample");
    }
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegOpenKeyA(HKCU, \"Software\\Sample\", key)", "RegCloseKey(k1)"}));
}

TEST_F(Open, PassesTheRootUnchanged) {
    platform.root(HKEY_LOCAL_MACHINE).make("a\\b");
    const Registry outer = Registry::open(HKEY_LOCAL_MACHINE, "a");
    const Registry inner = Registry::open(support::keyOf(outer), "b");
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegOpenKeyA(HKLM, \"a\", key)", "RegOpenKeyA(k1, \"b\", key)"}));
}

TEST_F(Open, NamesTheNodeAfterTheLastComponentAlone) {
    platform.user().make("one\\two\\three");
    EXPECT_EQ(Registry::open(HKEY_CURRENT_USER, "one\\two\\three").getName(), "three");
    EXPECT_EQ(Registry::open(HKEY_CURRENT_USER, "one").getName(), "one");
}

TEST_F(Open, NamesTheNodeAsThePathIsWrittenRegardlessOfTheCaseOfTheKey) {
    platform.user().make("Software\\Sample");
    EXPECT_EQ(Registry::open(HKEY_CURRENT_USER, "SOFTWARE\\sAMPLE").getName(), "sAMPLE");
}

TEST_F(Open, GivesAnEmptyNameForATrailingBackslash) {
    platform.user().make("one");
    EXPECT_EQ(Registry::open(HKEY_CURRENT_USER, "one\\").getName(), "");
}

TEST_F(Open, OfAMissingKeyIsAnOpenErrorAndNotNotFound) {
    EXPECT_EQ(summaryOf(thrownBy([] { Registry::open(HKEY_CURRENT_USER, "missing"); })),
              "OpenError 286");
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegOpenKeyA(HKCU, \"missing\", key)"}));
    EXPECT_EQ(platform.user().listing(), Lines());
}

TEST_F(Open, PassesTheBytesOfThePathUnchanged) {
    platform.user().make("caf\xe9\\\xc4\xd6");
    const Registry node = Registry::open(HKEY_CURRENT_USER, "caf\xe9\\\xc4\xd6");
    EXPECT_EQ(node.getName(), "\xc4\xd6");
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegOpenKeyA(HKCU, \"caf<e9>\\<c4><d6>\", key)"}));
}

TEST_F(Open, TwiceOfOnePathGivesTwoCellsWithTwoHandles) {
    platform.user().make("key");
    const Registry one = Registry::open(HKEY_CURRENT_USER, "key");
    const Registry other = Registry::open(HKEY_CURRENT_USER, "key");
    EXPECT_NE(cellOf(one), cellOf(other));
    EXPECT_NE(support::keyOf(one), support::keyOf(other));
    EXPECT_EQ(platform.openHandles(), 2U);
}

class Create : public support::RegistryTest {};

TEST_F(Create, MakesTheKeyWithItsMissingParents) {
    {
        // Destroyed at once.
        const Registry node = Registry::create(HKEY_CURRENT_USER, "one\\two\\three");
    }
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegCreateKeyA(HKCU, \"one\\two\\three\", key)", "RegCloseKey(k1)"}));
    EXPECT_EQ(platform.user().listing(), (Lines{"one\\", "one\\two\\", "one\\two\\three\\"}));
}

TEST_F(Create, OpensAKeyThatIsThereInACellOfItsOwn) {
    const Registry first = Registry::create(HKEY_CURRENT_USER, "Key");
    const Registry second = Registry::create(HKEY_CURRENT_USER, "key");
    EXPECT_NE(cellOf(first), cellOf(second));
    EXPECT_EQ(platform.user().listing(), (Lines{"Key\\"}));
}

TEST_F(Create, PassesTheRootUnchanged) {
    Registry::create(HKEY_LOCAL_MACHINE, "key");
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegCreateKeyA(HKLM, \"key\", key)", "RegCloseKey(k1)"}));
}

TEST_F(Create, NamesTheNodeAfterTheLastComponentAlone) {
    EXPECT_EQ(Registry::create(HKEY_CURRENT_USER, "one\\two\\three").getName(), "three");
    EXPECT_EQ(Registry::create(HKEY_CURRENT_USER, "one").getName(), "one");
    EXPECT_EQ(Registry::create(HKEY_CURRENT_USER, "one\\two\\").getName(), "");
}

class OpenSubKey : public support::RegistryTest {};

TEST_F(OpenSubKey, OpensBelowTheNodesKey) {
    platform.user().make("node\\sub");
    const Registry parent = node();
    {
        // Destroyed at once.
        const Registry sub = parent.openSubKey("sub");
    }
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegOpenKeyA(k1, \"sub\", key)", "RegCloseKey(k2)"}));
}

TEST_F(OpenSubKey, NamesTheNodeWithTheWholeArgument) {
    platform.user().make("node\\one\\two");
    EXPECT_EQ(node().openSubKey("one\\two").getName(), "one\\two");
    EXPECT_EQ(node().openSubKey("one\\").getName(), "one\\");
}

TEST_F(OpenSubKey, GivesANodeThatOutlivesItsParent) {
    platform.user().make("node\\sub\\below");
    Registry sub;
    {
        const Registry parent = node();
        sub = parent.openSubKey("sub");
    }
    EXPECT_EQ(sub.openSubKey("below").getName(), "below");
}

TEST_F(OpenSubKey, OfAMissingKeyMakesNothing) {
    EXPECT_EQ(summaryOf(thrownBy([this] { node().openSubKey("missing"); })), "OpenError 608");
    EXPECT_EQ(platform.user().listing(), (Lines{"node\\"}));
}

TEST_F(OpenSubKey, WithAnEmptyNameClosesTheHandleOfItsParentTwice) {
    {
        const Registry parent = node();
        const Registry same = parent.openSubKey("");
        EXPECT_EQ(support::keyOf(same), support::keyOf(parent));
        EXPECT_NE(cellOf(same), cellOf(parent));
    }
    EXPECT_EQ(platform.takeMisuses(), (Lines{"close of k1, which is closed"}));
}

class CreateSubKey : public support::RegistryTest {};

TEST_F(CreateSubKey, MakesTheKeyBelowTheNodesKey) {
    Registry parent = node();
    {
        // Destroyed at once.
        const Registry sub = parent.createSubKey("one\\two");
    }
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegCreateKeyA(k1, \"one\\two\", key)", "RegCloseKey(k2)"}));
    EXPECT_EQ(platform.user().listing(), (Lines{"node\\", "node\\one\\", "node\\one\\two\\"}));
}

TEST_F(CreateSubKey, NamesTheNodeWithTheWholeArgument) {
    EXPECT_EQ(node().createSubKey("one\\two").getName(), "one\\two");
    EXPECT_EQ(node().createSubKey("one\\two\\").getName(), "one\\two\\");
}

TEST_F(CreateSubKey, OpensAKeyThatIsThereInACellOfItsOwn) {
    Registry parent = node();
    const Registry first = parent.createSubKey("Sub");
    const Registry second = parent.createSubKey("sub");
    EXPECT_NE(cellOf(first), cellOf(second));
    EXPECT_EQ(platform.user().listing(), (Lines{"node\\", "node\\Sub\\"}));
}

class HasSubKey : public support::RegistryTest {};

TEST_F(HasSubKey, IsTrueForAKeyThatCanBeOpenedAndClosesIt) {
    platform.user().make("node\\Sub");
    const Registry parent = node();
    EXPECT_TRUE(parent.hasSubKey("sub"));
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegOpenKeyA(k1, \"sub\", key)", "RegCloseKey(k2)"}));
}

TEST_F(HasSubKey, IsFalseForAMissingKeyAndClosesWhatTheFailedCallLeft) {
    const Registry parent = node();
    EXPECT_FALSE(parent.hasSubKey("missing"));
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegOpenKeyA(k1, \"missing\", key)", "RegCloseKey(poison)"}));
    EXPECT_EQ(platform.takeMisuses(), (Lines{"close of poison, which was never opened"}));
}

TEST_F(HasSubKey, ClosesNoKeyIfTheFailedCallLeftNone) {
    platform.leaveKeysAlone();
    const Registry parent = node();
    EXPECT_FALSE(parent.hasSubKey("missing"));
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegOpenKeyA(k1, \"missing\", key)", "RegCloseKey(null)"}));
    EXPECT_EQ(platform.takeMisuses(), (Lines{"close of null, which was never opened"}));
}

TEST_F(HasSubKey, IsFalseForAnyFailureOfTheOpen) {
    platform.user().make("node\\sub");
    const Registry parent = node();
    for (const LONG code : {2, 5, 6, 87, 234, 259, 99999}) {
        platform.answer(1, code);
        EXPECT_FALSE(parent.hasSubKey("sub")) << code;
        platform.answerTruly();
    }
    EXPECT_EQ(platform.takeMisuses().size(), 7U);
}

TEST_F(HasSubKey, IsTrueForEveryResultOfTheClose) {
    platform.user().make("node\\sub");
    const Registry parent = node();
    platform.answer("RegCloseKey", 1, ERROR_ACCESS_DENIED);
    EXPECT_TRUE(parent.hasSubKey("sub"));
}

class DeleteSubKey : public support::RegistryTest {};

TEST_F(DeleteSubKey, DeletesTheKeyAndItsSubKeysInOneCall) {
    platform.user().make("node\\Sub\\one\\two")->setValue("v", REG_SZ, "x");
    platform.user().make("node\\kept");
    Registry parent = node();
    parent.deleteSubKey("sub");
    EXPECT_EQ(platform.takeCalls(), (Lines{"SHDeleteKeyA(k1, \"sub\")"}));
    EXPECT_EQ(platform.user().listing(), (Lines{"node\\", "node\\kept\\"}));
}

TEST_F(DeleteSubKey, OfAMissingKeyIsNotFound) {
    Registry parent = node();
    EXPECT_EQ(summaryOf(thrownBy([&] { parent.deleteSubKey("missing"); })), "NotFound 443");
    EXPECT_EQ(platform.takeCalls(), (Lines{"SHDeleteKeyA(k1, \"missing\")"}));
}

TEST_F(DeleteSubKey, InvalidatesNodesOfTheDeletedKeys) {
    platform.user().make("node\\sub\\below");
    Registry parent = node();
    const Registry below = parent.openSubKey("sub\\below");
    parent.deleteSubKey("sub");
    EXPECT_EQ(below.getName(), "sub\\below");
    EXPECT_EQ(summaryOf(thrownBy([&] { below.getSubKeys(); })), "OpenError 569");
}

} // namespace
