// hasValue, getIntValue and deleteValue, which find a value by its name.

#include "RegistryTest.h"

using support::Lines;
using support::summaryOf;
using support::thrownBy;

namespace {

class HasValue : public support::NodeTest {};

TEST_F(HasValue, AsksWithoutAnyPlaceForAnAnswer) {
    own->hasValue("name");
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegQueryValueExA(k1, \"name\", null, null, null, null)"}));
}

TEST_F(HasValue, IsTrueForAValueOfAnyTypeAndLengthAndIgnoresTheCaseOfItsName) {
    key.setValue("Name", 77, std::string(5000, 'x'));
    EXPECT_TRUE(own->hasValue("nAME"));
}

TEST_F(HasValue, IsFalseForAMissingValue) {
    key.setValue("name", REG_SZ, "x");
    EXPECT_FALSE(own->hasValue("nam"));
    EXPECT_FALSE(own->hasValue(""));
}

TEST_F(HasValue, SeesTheDefaultValueByTheEmptyName) {
    key.setValue("", REG_SZ, "x");
    EXPECT_TRUE(own->hasValue(""));
}

TEST_F(HasValue, IsFalseForAnyFailure) {
    key.setValue("name", REG_SZ, "x");
    for (const LONG code : {2, 5, 6, 87, 234, 259, 99999}) {
        platform.answer(1, code);
        EXPECT_FALSE(own->hasValue("name")) << code;
        platform.answerTruly();
    }
    EXPECT_TRUE(own->hasValue("name"));
}

TEST_F(HasValue, DoesNotAskTheChildrenOrTheParent) {
    key.make("sub")->setValue("child's", REG_SZ, "x");
    platform.user().setValue("parent's", REG_SZ, "x");
    EXPECT_FALSE(own->hasValue("child's"));
    EXPECT_FALSE(own->hasValue("parent's"));
}

class GetIntValue : public support::NodeTest {};

TEST_F(GetIntValue, AsksOnceForFourBytes) {
    key.setValue("name", REG_DWORD, std::string("\1\0\0\0", 4));
    EXPECT_EQ(own->getIntValue("name"), 1);
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegQueryValueExA(k1, \"name\", null, type, data, 4)"}));
}

TEST_F(GetIntValue, GivesAllThirtyTwoBitsWithTheirSign) {
    key.setValue("min", REG_DWORD, std::string("\0\0\0\x80", 4));
    key.setValue("max", REG_DWORD, "\xff\xff\xff\x7f");
    key.setValue("minus one", REG_DWORD, "\xff\xff\xff\xff");
    key.setValue("mixed", REG_DWORD, "\x78\x56\x34\x12");
    EXPECT_EQ(own->getIntValue("min"), -2147483647 - 1);
    EXPECT_EQ(own->getIntValue("max"), 2147483647);
    EXPECT_EQ(own->getIntValue("minus one"), -1);
    EXPECT_EQ(own->getIntValue("mixed"), 0x12345678);
}

TEST_F(GetIntValue, IgnoresTheCaseOfTheName) {
    key.setValue("Number", REG_DWORD, std::string("\5\0\0\0", 4));
    EXPECT_EQ(own->getIntValue("nUMBER"), 5);
}

TEST_F(GetIntValue, ReadsTheDefaultValueByTheEmptyName) {
    key.setValue("", REG_DWORD, std::string("\6\0\0\0", 4));
    EXPECT_EQ(own->getIntValue(""), 6);
}

TEST_F(GetIntValue, OfAMissingValueIsAnOpenErrorAndNotNotFound) {
    EXPECT_EQ(summaryOf(thrownBy([this] { own->getIntValue("missing"); })), "OpenError 398");
}

TEST_F(GetIntValue, RefusesEachOtherTypeOfUpToFourBytes) {
    for (const DWORD type : {REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, DWORD{5}, REG_MULTI_SZ,
                             REG_QWORD, DWORD{0xffffffff}}) {
        for (const std::string data : {"", "a", "abc", "abcd"}) {
            key.setValue("name", type, data);
            EXPECT_EQ(summaryOf(thrownBy([this] { own->getIntValue("name"); })), "OpenError 401")
                << "type " << type << ", data " << data;
        }
    }
}

TEST_F(GetIntValue, FailsInTheQueryForMoreThanFourBytesOfAnyType) {
    for (const DWORD type : {REG_SZ, REG_DWORD, REG_QWORD}) {
        key.setValue("name", type, "abcde");
        EXPECT_EQ(summaryOf(thrownBy([this] { own->getIntValue("name"); })), "OpenError 398")
            << "type " << type;
    }
}

TEST_F(GetIntValue, FillsUpWithZerosWhatIsShorterThanFourBytes) {
    key.setValue("name", REG_DWORD, "\1\2");
    EXPECT_EQ(own->getIntValue("name"), 0x0201);
    key.setValue("name", REG_DWORD, "");
    EXPECT_EQ(own->getIntValue("name"), 0);
}

class DeleteValue : public support::NodeTest {};

TEST_F(DeleteValue, DeletesThatValueAloneInOneCall) {
    key.setValue("Name", REG_SZ, "x");
    key.setValue("", REG_SZ, "y");
    key.make("name");
    own->deleteValue("nAME");
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegDeleteValueA(k1, \"nAME\")"}));
    EXPECT_EQ(key.listing(), (Lines{"=1:y", "name\\"}));
}

TEST_F(DeleteValue, DeletesTheDefaultValueByTheEmptyName) {
    key.setValue("name", REG_SZ, "x");
    key.setValue("", REG_SZ, "y");
    own->deleteValue("");
    EXPECT_EQ(key.listing(), (Lines{"name=1:x"}));
}

TEST_F(DeleteValue, OfAMissingValueIsNotFound) {
    EXPECT_EQ(summaryOf(thrownBy([this] { own->deleteValue("missing"); })), "NotFound 462");
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegDeleteValueA(k1, \"missing\")"}));
}

TEST_F(DeleteValue, CountsEveryFailureButAccessDeniedAsNotFound) {
    for (const LONG code : {2, 6, 87, 234, 259, 1018}) {
        platform.answer(1, code);
        EXPECT_EQ(summaryOf(thrownBy([this] { own->deleteValue("name"); })), "NotFound 462")
            << code;
        platform.answerTruly();
    }
}

} // namespace
