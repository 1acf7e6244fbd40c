#include "NodeCell.h"
#include "RegistryTest.h"

using support::Lines;
using support::summaryOf;
using support::thrownBy;
using ZOL::RegistryAccess::Registry;

namespace {

class GetSubKeys : public support::NodeTest {
protected:
    std::string failure() {
        return summaryOf(thrownBy([this] { own->getSubKeys(); }));
    }

    static Lines namesOf(const std::vector<Registry>& nodes) {
        Lines names;
        for (const Registry& each : nodes) {
            names.push_back(each.getName());
        }
        return names;
    }
};

TEST_F(GetSubKeys, OpensEachSubKeyAsItIsEnumeratedIntoAFreshBuffer) {
    key.make("zebra\\below");
    key.make("Apple");
    {
        const std::vector<Registry> subKeys = own->getSubKeys();
        EXPECT_EQ(namesOf(subKeys), (Lines{"zebra", "Apple"}));
        EXPECT_EQ(platform.takeCalls(),
                  (Lines{"RegEnumKeyA(k1, 0, zeros, 261)", "RegOpenKeyA(k1, \"zebra\", key)",
                         "RegEnumKeyA(k1, 1, zeros, 261)", "RegOpenKeyA(k1, \"Apple\", key)",
                         "RegEnumKeyA(k1, 2, zeros, 261)"}));
    }
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegCloseKey(k2)", "RegCloseKey(k3)"}));
}

TEST_F(GetSubKeys, OfAKeyWithoutSubKeysIsEmpty) {
    key.setValue("value", REG_SZ, "x");
    EXPECT_TRUE(own->getSubKeys().empty());
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegEnumKeyA(k1, 0, zeros, 261)"}));
}

TEST_F(GetSubKeys, GivesEachElementACellOfItsOwnWithOneReference) {
    key.make("one");
    key.make("two");
    key.make("three");
    const std::vector<Registry> subKeys = own->getSubKeys();
    for (const Registry& subKey : subKeys) {
        EXPECT_EQ(support::referencesOf(subKey), 1);
    }
    EXPECT_EQ(platform.openHandles(), 4U);
}

TEST_F(GetSubKeys, GivesNodesThatOutliveTheOneThatListedThem) {
    key.make("sub\\below");
    const std::vector<Registry> subKeys = own->getSubKeys();
    own.reset();
    EXPECT_TRUE(subKeys.at(0).hasSubKey("below"));
}

TEST_F(GetSubKeys, KeepsAKeyOpenWhileACopyOfItsElementExists) {
    key.make("one");
    key.make("two");
    const Registry kept = own->getSubKeys().at(1);
    EXPECT_EQ(platform.openHandles(), 2U);
    EXPECT_EQ(kept.getName(), "two");
    EXPECT_EQ(support::referencesOf(kept), 1);
}

TEST_F(GetSubKeys, ListsAThousand) {
    Lines expected;
    for (int i = 0; i < 1000; ++i) {
        expected.push_back("sub " + std::to_string(i));
        key.make(expected.back());
    }
    {
        const std::vector<Registry> subKeys = own->getSubKeys();
        EXPECT_EQ(namesOf(subKeys), expected);
        EXPECT_EQ(platform.openHandles(), 1001U);
    }
    EXPECT_EQ(platform.openHandles(), 1U);
}

TEST_F(GetSubKeys, KeepsBytesBeyondAsciiInNames) {
    key.make("\xe4\xf6\xfc");
    EXPECT_EQ(namesOf(own->getSubKeys()), (Lines{"\xe4\xf6\xfc"}));
}

TEST_F(GetSubKeys, TakesNamesOf260BytesAndEndsAtALongerOne) {
    key.make(std::string(260, 'n'));
    EXPECT_EQ(namesOf(own->getSubKeys()), (Lines{std::string(260, 'n')}));
    key.make(std::string(261, 'n'));
    EXPECT_EQ(failure(), "OpenError 569");
    EXPECT_EQ(platform.openHandles(), 1U);
}

TEST_F(GetSubKeys, KeepsAll261BytesOfANameWithoutAZero) {
    platform.leaveOutTerminators();
    key.make(std::string(260, 'n') + 'x');
    key.make("short");
    EXPECT_EQ(namesOf(own->getSubKeys()), (Lines{std::string(260, 'n') + 'x', "short"}));
}

TEST_F(GetSubKeys, EndsAtOneSubKeyThatCannotBeOpenedAndClosesTheOthers) {
    for (const char* const name : {"one", "two", "three", "four"}) {
        key.make(name);
    }
    platform.answer("RegOpenKeyA", 3, ERROR_ACCESS_DENIED);
    EXPECT_EQ(failure(), "AccessDenied 603");
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegEnumKeyA(k1, 0, zeros, 261)", "RegOpenKeyA(k1, \"one\", key)",
                     "RegEnumKeyA(k1, 1, zeros, 261)", "RegOpenKeyA(k1, \"two\", key)",
                     "RegEnumKeyA(k1, 2, zeros, 261)", "RegOpenKeyA(k1, \"three\", key)",
                     "RegCloseKey(k2)", "RegCloseKey(k3)"}));
    EXPECT_EQ(platform.openHandles(), 1U);
}

TEST_F(GetSubKeys, EndsAtAnEnumerationThatFailsInTheMiddle) {
    key.make("one");
    key.make("two");
    platform.answer("RegEnumKeyA", 2, ERROR_ACCESS_DENIED);
    EXPECT_EQ(failure(), "AccessDenied 561");
    platform.answer("RegEnumKeyA", 2, ERROR_FILE_NOT_FOUND);
    EXPECT_EQ(failure(), "OpenError 569");
    EXPECT_EQ(platform.openHandles(), 1U);
}

TEST_F(GetSubKeys, EndsAtTheFirst259) {
    key.make("one");
    key.make("two");
    platform.answer("RegEnumKeyA", 2, ERROR_NO_MORE_ITEMS);
    EXPECT_EQ(namesOf(own->getSubKeys()), (Lines{"one"}));
}

} // namespace
