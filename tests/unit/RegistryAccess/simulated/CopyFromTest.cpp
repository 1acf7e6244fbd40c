#include "NodeCell.h"
#include "RegistryTest.h"

using support::Lines;
using support::RegistryKey;
using support::summaryOf;
using support::thrownBy;
using ZOL::RegistryAccess::Registry;

namespace {

/// Copies from the key "source" (k2) to that of the node (k1).
class CopyFrom : public support::NodeTest {
protected:
    CopyFrom() : source(*platform.user().make("source")) {}

    void copy() {
        const Registry from = node("source");
        own->copyFrom(from);
        calls = platform.takeCalls();
    }

    RegistryKey& source;
    Lines calls;
};

TEST_F(CopyFrom, CopiesValuesThenListsAllSubKeysThenCopiesThemOneByOne) {
    source.setValue("v", REG_BINARY, "x");
    source.make("a\\b");
    source.make("c");
    copy();
    EXPECT_EQ(calls, (Lines{"RegEnumValueA(k2, 0, zeros, 261, null, type, zeros, 261)",
                            "RegSetValueExA(k1, \"v\", 0, 3, \"x\", 1)",
                            "RegEnumValueA(k2, 1, zeros, 261, null, type, zeros, 261)",
                            "RegEnumKeyA(k2, 0, zeros, 261)",
                            "RegOpenKeyA(k2, \"a\", key)", // k3
                            "RegEnumKeyA(k2, 1, zeros, 261)",
                            "RegOpenKeyA(k2, \"c\", key)", // k4
                            "RegEnumKeyA(k2, 2, zeros, 261)",
                            "RegCreateKeyA(k1, \"a\", key)", // k5
                            "RegEnumValueA(k3, 0, zeros, 261, null, type, zeros, 261)",
                            "RegEnumKeyA(k3, 0, zeros, 261)",
                            "RegOpenKeyA(k3, \"b\", key)", // k6
                            "RegEnumKeyA(k3, 1, zeros, 261)",
                            "RegCreateKeyA(k5, \"b\", key)", // k7
                            "RegEnumValueA(k6, 0, zeros, 261, null, type, zeros, 261)",
                            "RegEnumKeyA(k6, 0, zeros, 261)",
                            "RegCloseKey(k7)",
                            "RegCloseKey(k6)",
                            "RegCloseKey(k5)",
                            "RegCreateKeyA(k1, \"c\", key)", // k8
                            "RegEnumValueA(k4, 0, zeros, 261, null, type, zeros, 261)",
                            "RegEnumKeyA(k4, 0, zeros, 261)",
                            "RegCloseKey(k8)",
                            "RegCloseKey(k3)",
                            "RegCloseKey(k4)"}));
    EXPECT_EQ(key.listing(), source.listing());
}

TEST_F(CopyFrom, MergesIntoExistingContentAndDeletesNothing) {
    key.make("Sub")->setValue("Same", REG_SZ, "old");
    key.make("sub")->setValue("own", REG_SZ, "own");
    key.make("sub\\own");
    key.make("own");
    source.make("sub")->setValue("same", REG_BINARY, "new");
    source.make("sub\\new")->setValue("added", REG_BINARY, "added");
    copy();
    EXPECT_EQ(key.listing(), (Lines{"Sub\\", "Sub\\Same=3:new", "Sub\\own=1:own", "Sub\\own\\",
                                    "Sub\\new\\", "Sub\\new\\added=3:added", "own\\"}));
}

TEST_F(CopyFrom, LeavesTheSourceAsItWas) {
    key.make("own")->setValue("v", REG_SZ, "x");
    source.make("sub\\below")->setValue("w", REG_BINARY, "y");
    const Lines before = source.listing();
    copy();
    EXPECT_EQ(source.listing(), before);
}

TEST_F(CopyFrom, OfTheNodeItselfChangesNothing) {
    key.make("sub\\below")->setValue("w", REG_BINARY, "y");
    const Lines before = key.listing();
    own->copyFrom(*own);
    EXPECT_EQ(key.listing(), before);
}

TEST_F(CopyFrom, CopiesHundredsOfLevels) {
    RegistryKey* level = &source;
    for (int i = 0; i < 500; ++i) {
        level = level->make("level").get();
        level->setValue("depth", REG_BINARY, std::to_string(i));
    }
    copy();
    EXPECT_EQ(key.listing(), source.listing());
}

TEST_F(CopyFrom, CopiesAThousandSubKeysAndAThousandValues) {
    for (int i = 0; i < 1000; ++i) {
        source.make("sub " + std::to_string(i))->setValue("v", REG_BINARY, std::to_string(i));
        source.setValue("value " + std::to_string(i), REG_BINARY, std::to_string(i));
    }
    copy();
    EXPECT_EQ(key.listing(), source.listing());
}

TEST_F(CopyFrom, CopiesTheSubKeysIfValuesStoppedSilently) {
    source.setValue("too long", REG_BINARY, std::string(262, 'x'));
    source.setValue("behind", REG_BINARY, "x");
    source.make("sub")->setValue("v", REG_BINARY, "y");
    copy();
    EXPECT_EQ(key.listing(), (Lines{"sub\\", "sub\\v=3:y"}));
}

TEST_F(CopyFrom, StopsWhereASubKeyCannotBeMadeAndKeepsWhatWasCopied) {
    source.make("one")->setValue("v", REG_BINARY, "x");
    source.make("two");
    source.make("three");
    const Registry from = node("source");
    platform.answer("RegCreateKeyA", 2, ERROR_ACCESS_DENIED);
    EXPECT_EQ(summaryOf(thrownBy([&] { own->copyFrom(from); })), "AccessDenied 625");
    EXPECT_EQ(key.listing(), (Lines{"one\\", "one\\v=3:x"}));
    EXPECT_EQ(platform.openHandles(), 2U);
}

TEST_F(CopyFrom, StopsWhereASubKeyOfTheSourceCannotBeListed) {
    source.make("one\\below");
    source.make("two");
    const Registry from = node("source");
    platform.answer("RegEnumKeyA", 4, ERROR_ACCESS_DENIED); // that of one
    EXPECT_EQ(summaryOf(thrownBy([&] { own->copyFrom(from); })), "AccessDenied 561");
    EXPECT_EQ(key.listing(), (Lines{"one\\"}));
    EXPECT_EQ(platform.openHandles(), 2U);
}

/// No handle stays open for any failed call at any depth.
class CopyOfADeepTree : public CopyFrom, public testing::WithParamInterface<LONG> {};
INSTANTIATE_TEST_SUITE_P(AnsweredWith, CopyOfADeepTree,
                         testing::Values(ERROR_ACCESS_DENIED, ERROR_MORE_DATA, ERROR_NO_MORE_ITEMS,
                                         31337),
                         [](const auto& instance) { return std::to_string(instance.param); });

TEST_P(CopyOfADeepTree, LeavesNoHandleOpenForAnyFailedCall) {
    for (const char* const path : {"a\\b\\c\\d\\e", "a\\b\\x", "a\\y", "f\\g", "h"}) {
        source.make(path)->setValue("value", REG_BINARY, path);
    }
    const Registry from = node("source");
    bool reachedTheEnd = false;
    std::size_t failures = 0;
    for (std::size_t n = 1; !reachedTheEnd; ++n) {
        platform.user().erase("node");
        own = std::make_unique<Registry>(node());
        const std::size_t before = platform.calls();
        platform.answer(n, GetParam());
        if (!thrownBy([&] { own->copyFrom(from); }).errorClass.empty()) {
            ++failures;
        }
        ASSERT_EQ(platform.openHandles(), 2U) << "after the failure of call " << n;
        ASSERT_EQ(platform.takeMisuses(), Lines());
        platform.answerTruly();
        reachedTheEnd = platform.calls() - before < n;
    }
    EXPECT_GT(failures, GetParam() == ERROR_NO_MORE_ITEMS ? 10U : 30U);
    EXPECT_EQ(platform.user().find("node")->listing(), source.listing());
}

} // namespace
