// Copies of values and trees, on the real registry.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "RegistryFixture.h"

using support::bytes;
using support::rawValue;
using support::RawValue;
using support::setRawValue;
using support::withZero;
using ZOL::RegistryAccess::Registry;

namespace {

class RegistryCopy : public support::RegistryFixture {
protected:
    Registry from_ = make("from");
    Registry to_ = make("to");
    std::string toPath_ = path("to");
    std::string fromPath_ = path("from");
};

TEST_F(RegistryCopy, KeepsTypeAndEveryByteOfEachValue) {
    const RawValue values[] = {
        {REG_NONE, std::string("\0\1", 2)},
        {REG_SZ, std::string("text\0", 5)},
        {REG_SZ, ""},
        {REG_EXPAND_SZ, std::string("%TEMP%\\x\0", 9)},
        {REG_BINARY, std::string("\0\1\0\0\2\0", 6)},
        {REG_BINARY, ""},
        {REG_DWORD, std::string("\1\0\0\x80", 4)},
        {REG_DWORD_BIG_ENDIAN, std::string("\1\0\0\2", 4)},
        {REG_MULTI_SZ, std::string("one\0two\0\0", 9)},
        {REG_QWORD, std::string("\1\2\0\4\5\6\7\x88", 8)},
        {1234, std::string("of no known type\0", 17)},
    };
    int number = 0;
    for (const RawValue& value : values) {
        setRawValue(fromPath_, "value " + std::to_string(++number), value);
    }
    to_.copyValuesFrom(from_);
    number = 0;
    for (const RawValue& value : values) {
        EXPECT_EQ(rawValue(toPath_, "value " + std::to_string(++number)), value);
    }
}

TEST_F(RegistryCopy, TakesTheDefaultValueToo) {
    from_.updateStringValue("", withZero("default"));
    to_.copyValuesFrom(from_);
    EXPECT_EQ(to_.getStringValue(""), bytes("default"));
}

TEST_F(RegistryCopy, KeepsTheSpellingOfNames) {
    from_.updateStringValue("Name", withZero("x"));
    to_.copyValuesFrom(from_);
    EXPECT_EQ(to_.getStringValue("Name"), bytes("x"));
}

TEST_F(RegistryCopy, OfValuesTakesNoSubKeys) {
    make("from\\a");
    to_.copyValuesFrom(from_);
    EXPECT_TRUE(to_.getSubKeys().empty());
}

TEST_F(RegistryCopy, OfNothingIsNothing) {
    to_.updateIntValue("kept", 1);
    to_.copyValuesFrom(from_);
    to_.copyFrom(from_);
    EXPECT_EQ(to_.getIntValue("kept"), 1);
    EXPECT_TRUE(to_.getSubKeys().empty());
}

TEST_F(RegistryCopy, OverwritesValuesOfTheSameNameAndKeepsTheOthers) {
    from_.updateIntValue("both", 1);
    to_.updateStringValue("both", withZero("old"));
    to_.updateIntValue("kept", 2);
    to_.copyValuesFrom(from_);
    EXPECT_EQ(to_.getIntValue("both"), 1);
    EXPECT_EQ(to_.getIntValue("kept"), 2);
}

TEST_F(RegistryCopy, LeavesTheSourceAsItIs) {
    from_.updateIntValue("value", 1);
    make("from\\a\\b");
    to_.updateIntValue("other", 2);
    to_.copyFrom(from_);
    EXPECT_EQ(from_.getIntValue("value"), 1);
    EXPECT_FALSE(from_.hasValue("other"));
    EXPECT_TRUE(from_.hasSubKey("a\\b"));
    EXPECT_EQ(from_.getSubKeys().size(), 1U);
}

TEST_F(RegistryCopy, TakesTwoHundredSixtyOneBytesOfDataAndNamesOfTwoHundredSixty) {
    setRawValue(fromPath_, "data", {REG_BINARY, std::string(261, 'x')});
    setRawValue(fromPath_, "text", {REG_SZ, std::string(261, 'x')});
    setRawValue(fromPath_, std::string(260, 'n'), {REG_BINARY, "x"});
    to_.copyValuesFrom(from_);
    EXPECT_EQ(rawValue(toPath_, "data"), (RawValue{REG_BINARY, std::string(261, 'x')}));
    EXPECT_EQ(rawValue(toPath_, "text"), (RawValue{REG_SZ, std::string(261, 'x')}))
        << "no terminating zero is added";
    EXPECT_EQ(rawValue(toPath_, std::string(260, 'n')), (RawValue{REG_BINARY, "x"}));
}

TEST_F(RegistryCopy, StopsWithoutAWordAtDataTooLong) {
    // They are enumerated in this order, by age as well as by name.
    from_.updateIntValue("a", 1);
    setRawValue(fromPath_, "m", {REG_BINARY, std::string(262, 'x')});
    from_.updateIntValue("z", 2);
    to_.copyValuesFrom(from_);
    EXPECT_TRUE(to_.hasValue("a"));
    EXPECT_FALSE(to_.hasValue("m"));
    EXPECT_FALSE(to_.hasValue("z"));
}

TEST_F(RegistryCopy, StopsWithoutAWordAtANameTooLong) {
    from_.updateIntValue("a", 1);
    from_.updateIntValue(std::string(261, 'm'), 1);
    from_.updateIntValue("z", 2);
    to_.copyValuesFrom(from_);
    EXPECT_TRUE(to_.hasValue("a"));
    EXPECT_FALSE(to_.hasValue(std::string(261, 'm')));
    EXPECT_FALSE(to_.hasValue("z"));
}

TEST_F(RegistryCopy, OfATreeGoesOnWithTheSubKeysBehindAValueTooLong) {
    from_.updateStringValue("a", withZero(std::string(261, 'x')));
    make("from\\below").updateIntValue("value", 1);
    to_.copyFrom(from_);
    EXPECT_FALSE(to_.hasValue("a"));
    EXPECT_EQ(make("to\\below").getIntValue("value"), 1);
}

TEST_F(RegistryCopy, StopsWithoutAWordWhereTheDestinationRefusesChanges) {
    from_.updateIntValue("a", 1);
    const support::Refusal refusal(toPath_, support::Refusal::changes);
    Registry refusing = Registry::open(HKEY_CURRENT_USER, toPath_);
    refusing.copyValuesFrom(from_);
    EXPECT_FALSE(to_.hasValue("a"));
}

TEST_F(RegistryCopy, OfATreeTakesAllOfIt) {
    from_.updateIntValue("top", 1);
    make("from\\a").updateIntValue("value", 2);
    make("from\\a\\b").updateIntValue("value", 3);
    make("from\\c");
    to_.copyFrom(from_);
    EXPECT_EQ(to_.getIntValue("top"), 1);
    EXPECT_EQ(make("to\\a").getIntValue("value"), 2);
    EXPECT_EQ(make("to\\a\\b").getIntValue("value"), 3);
    EXPECT_TRUE(to_.hasSubKey("c"));
    EXPECT_EQ(to_.getSubKeys().size(), 2U);
}

TEST_F(RegistryCopy, OfATreeOntoAnotherOverwritesMergesAndDeletesNothing) {
    make("from\\both").updateIntValue("both", 1);
    make("from\\both\\below new").updateIntValue("value", 2);
    make("to\\both").updateIntValue("both", 10);
    make("to\\both").updateIntValue("kept", 11);
    make("to\\both\\below kept").updateIntValue("value", 12);
    make("to\\kept").updateIntValue("value", 13);
    to_.copyFrom(from_);
    EXPECT_EQ(make("to\\both").getIntValue("both"), 1);
    EXPECT_EQ(make("to\\both").getIntValue("kept"), 11);
    EXPECT_EQ(make("to\\both\\below new").getIntValue("value"), 2);
    EXPECT_EQ(make("to\\both\\below kept").getIntValue("value"), 12);
    EXPECT_EQ(make("to\\kept").getIntValue("value"), 13);
}

TEST_F(RegistryCopy, OfATreeMergesWithKeysSpelledInAnotherCase) {
    make("from\\Name").updateIntValue("value", 1);
    make("to\\nAME");
    to_.copyFrom(from_);
    ASSERT_EQ(to_.getSubKeys().size(), 1U);
    EXPECT_EQ(to_.getSubKeys().front().getName(), "nAME");
    EXPECT_EQ(to_.getSubKeys().front().getIntValue("value"), 1);
}

TEST_F(RegistryCopy, ThatFailsKeepsWhatIsCopiedSoFar) {
    // They are enumerated in this order, by age as well as by name.
    from_.updateIntValue("value", 1);
    make("from\\a").updateIntValue("value", 2);
    make("from\\m\\refused");
    make("from\\z");
    const support::Refusal refusal(path("from\\m\\refused"), support::Refusal::opening);
    EXPECT_THROW(to_.copyFrom(from_), Registry::AccessDenied);
    EXPECT_EQ(to_.getIntValue("value"), 1);
    EXPECT_EQ(make("to\\a").getIntValue("value"), 2);
    EXPECT_TRUE(to_.hasSubKey("m"));
    EXPECT_FALSE(to_.hasSubKey("z"));
}

TEST_F(RegistryCopy, ReachesAHundredLevelsDown) {
    constexpr int levels = 100;
    {
        // Level by level, because the whole path is too long for one call.
        std::vector<Registry> way{from_};
        for (int i = 1; i <= levels; ++i) {
            way.push_back(way.back().createSubKey("level " + std::to_string(i)));
            way.back().updateIntValue("level", i);
        }
    }
    to_.copyFrom(from_);
    std::vector<Registry> way{to_};
    for (int i = 1; i <= levels; ++i) {
        const std::vector<Registry> subKeys = way.back().getSubKeys();
        ASSERT_EQ(subKeys.size(), 1U) << "at level " << i;
        ASSERT_EQ(subKeys.front().getName(), "level " + std::to_string(i));
        ASSERT_EQ(subKeys.front().getIntValue("level"), i);
        way.push_back(subKeys.front());
    }
    EXPECT_TRUE(way.back().getSubKeys().empty());

    way.clear();
    Registry node = make();
    node.deleteSubKey("to");
    EXPECT_FALSE(node.hasSubKey("to")) << "deleting reaches as far";
}

TEST_F(RegistryCopy, IsCompleteForAThousandSubKeys) {
    for (int i = 0; i < 1000; ++i) {
        from_.createSubKey(std::to_string(i)).updateIntValue("number", i);
    }
    to_.copyFrom(from_);
    const std::vector<Registry> copied = to_.getSubKeys();
    EXPECT_EQ(copied.size(), 1000U);
    for (const Registry& node : copied) {
        EXPECT_EQ(std::to_string(node.getIntValue("number")), node.getName());
    }
}

} // namespace
