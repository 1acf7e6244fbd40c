// updateStringValue and updateIntValue.

#include "RegistryTest.h"

using support::bytes;
using support::Lines;
using support::summaryOf;
using support::text;
using support::thrownBy;

namespace {

class UpdateStringValue : public support::NodeTest {};

TEST_F(UpdateStringValue, WritesExactlyTheBytesAsATextInOneCall) {
    EXPECT_FALSE(own->updateStringValue("name", bytes(std::string("text\0", 5))));
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegSetValueExA(k1, \"name\", 0, 1, \"text<00>\", 5)"}));
    EXPECT_EQ(key.listing(), (Lines{"name=1:text<00>"}));
}

TEST_F(UpdateStringValue, CountsNoTerminatorOfItsOwn) {
    own->updateStringValue("name", bytes("text"));
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegSetValueExA(k1, \"name\", 0, 1, \"text\", 4)"}));
}

TEST_F(UpdateStringValue, HasAZeroAfterTheDataWhereThePlatformReadsOne) {
    // A vector's buffer ends with its last byte, so that a sanitizer detects a read past it.
    for (const std::size_t length : {1U, 7U, 8U, 15U, 16U, 24U, 32U, 64U, 1000U, 4096U}) {
        own->updateStringValue("name", bytes(std::string(length, 'x')));
        EXPECT_EQ(key.findValue("name")->data, std::string(length, 'x') + '\0') << length;
    }
}

TEST_F(UpdateStringValue, WithoutBytesStoresAnEmptyText) {
    EXPECT_FALSE(own->updateStringValue("name", {}));
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegSetValueExA(k1, \"name\", 0, 1, \"\", 0)"}));
    EXPECT_EQ(key.listing(), (Lines{"name=1:"}));
    EXPECT_EQ(text(own->getStringValue("name")), "");
}

TEST_F(UpdateStringValue, KeepsEmbeddedZerosThatAReadCutsAt) {
    const std::string data("one\0two\0", 8);
    own->updateStringValue("name", bytes(data));
    EXPECT_EQ(key.findValue("name")->data, data);
    EXPECT_EQ(text(own->getStringValue("name")), "one");
}

TEST_F(UpdateStringValue, KeepsEveryByteValue) {
    std::string all;
    for (int byte = 255; byte >= 0; --byte) {
        all += static_cast<char>(byte);
    }
    own->updateStringValue("name", bytes(all));
    EXPECT_EQ(key.findValue("name")->data, all);
}

TEST_F(UpdateStringValue, ReplacesDataAndTypeAndKeepsTheNamesOldCase) {
    key.setValue("Name", REG_DWORD, "1234");
    own->updateStringValue("nAME", bytes(std::string("x\0", 2)));
    EXPECT_EQ(key.listing(), (Lines{"Name=1:x<00>"}));
}

TEST_F(UpdateStringValue, WritesTheDefaultValueByTheEmptyName) {
    own->updateStringValue("", bytes(std::string("x\0", 2)));
    EXPECT_EQ(key.listing(), (Lines{"=1:x<00>"}));
}

TEST_F(UpdateStringValue, WritesMoreThanCanBeReadBack) {
    own->updateStringValue("name", bytes(std::string(100000, 'x') + '\0'));
    EXPECT_EQ(key.findValue("name")->data.size(), 100001U);
    EXPECT_EQ(summaryOf(thrownBy([this] { own->getStringValue("name"); })), "OpenError 350");
}

TEST_F(UpdateStringValue, ThatFailsWritesNothing) {
    key.setValue("name", REG_SZ, "old");
    platform.answerAll("RegSetValueExA", ERROR_ACCESS_DENIED);
    EXPECT_EQ(summaryOf(thrownBy([this] { own->updateStringValue("name", bytes("new")); })),
              "AccessDenied 491");
    EXPECT_EQ(key.listing(), (Lines{"name=1:old"}));
}

class UpdateIntValue : public support::NodeTest {};

TEST_F(UpdateIntValue, WritesFourBytesAsANumberInOneCall) {
    EXPECT_FALSE(own->updateIntValue("name", 0x44434241));
    EXPECT_EQ(platform.takeCalls(), (Lines{"RegSetValueExA(k1, \"name\", 0, 4, \"ABCD\", 4)"}));
    EXPECT_EQ(key.listing(), (Lines{"name=4:ABCD"}));
}

TEST_F(UpdateIntValue, IsReadBackByGetIntValue) {
    for (const std::int32_t number : {0, 1, -1, 2147483647, -2147483647 - 1}) {
        EXPECT_FALSE(own->updateIntValue("name", number));
        EXPECT_EQ(own->getIntValue("name"), number);
    }
}

TEST_F(UpdateIntValue, ReplacesDataAndType) {
    key.setValue("Name", REG_SZ, "text");
    own->updateIntValue("name", 0x44434241);
    EXPECT_EQ(key.listing(), (Lines{"Name=4:ABCD"}));
}

TEST_F(UpdateIntValue, WritesTheDefaultValueByTheEmptyName) {
    own->updateIntValue("", 0x44434241);
    EXPECT_EQ(key.listing(), (Lines{"=4:ABCD"}));
}

TEST_F(UpdateIntValue, ThatFailsWritesNothing) {
    platform.answerAll("RegSetValueExA", 2);
    EXPECT_EQ(summaryOf(thrownBy([this] { own->updateIntValue("name", 1); })), "OpenError 529");
    EXPECT_EQ(key.listing(), Lines());
}

} // namespace
