// Values, on the real registry.

#include <cstdint>
#include <limits>

#include <gtest/gtest.h>

#include "ErrorExpectation.h"
#include "RegistryFixture.h"

using support::bytes;
using support::expectError;
using support::rawValue;
using support::RawValue;
using support::setRawValue;
using support::withZero;
using ZOL::RegistryAccess::Registry;

namespace {

class RegistryValues : public support::RegistryFixture {
protected:
    Registry node_ = make();
};

TEST_F(RegistryValues, TextIsStoredAsText) {
    node_.updateStringValue("text", withZero("some text"));
    EXPECT_EQ(rawValue(path(), "text"), (RawValue{REG_SZ, std::string("some text\0", 10)}));
    EXPECT_EQ(node_.getStringValue("text"), bytes("some text"));
}

TEST_F(RegistryValues, ANumberIsStoredAsANumber) {
    node_.updateIntValue("number", 0x04030201);
    EXPECT_EQ(rawValue(path(), "number"), (RawValue{REG_DWORD, "\x01\x02\x03\x04"}));
    EXPECT_EQ(node_.getIntValue("number"), 0x04030201);
}

TEST_F(RegistryValues, NumbersKeepTheirSign) {
    for (const std::int32_t number : {0, -1, std::numeric_limits<std::int32_t>::min(),
                                      std::numeric_limits<std::int32_t>::max()}) {
        node_.updateIntValue("number", number);
        EXPECT_EQ(node_.getIntValue("number"), number);
    }
}

TEST_F(RegistryValues, UpdatingAnswersFalseAlways) {
    EXPECT_FALSE(node_.updateStringValue("text", withZero("new")));
    EXPECT_FALSE(node_.updateStringValue("text", withZero("other")));
    EXPECT_FALSE(node_.updateIntValue("number", 1));
    EXPECT_FALSE(node_.updateIntValue("number", 1));
}

TEST_F(RegistryValues, UpdatingMakesAMissingValue) {
    EXPECT_FALSE(node_.hasValue("text"));
    EXPECT_FALSE(node_.hasValue("number"));
    node_.updateStringValue("text", withZero("new"));
    node_.updateIntValue("number", 1);
    EXPECT_TRUE(node_.hasValue("text"));
    EXPECT_TRUE(node_.hasValue("number"));
}

TEST_F(RegistryValues, UpdatingReplacesValueAndType) {
    node_.updateStringValue("value", withZero("text"));
    node_.updateIntValue("value", 6);
    EXPECT_EQ(node_.getIntValue("value"), 6);
    node_.updateStringValue("value", withZero("text again"));
    EXPECT_EQ(rawValue(path(), "value"), (RawValue{REG_SZ, std::string("text again\0", 11)}));
}

TEST_F(RegistryValues, UpdatingInAnotherCaseKeepsTheOldSpelling) {
    node_.updateIntValue("Value", 1);
    node_.updateStringValue("VALUE", withZero("text"));
    EXPECT_EQ(node_.getStringValue("Value"), bytes("text"));
    EXPECT_THROW(node_.getStringValue("VALUE"), Registry::NotFound);
}

TEST_F(RegistryValues, AMissingValueIsFalseForHasValue) {
    EXPECT_FALSE(node_.hasValue("missing"));
}

TEST_F(RegistryValues, AMissingValueIsNotFoundForTheReadingOfText) {
    node_.updateIntValue("other", 1);
    expectError<Registry::NotFound>(345, "The requested value was not found.",
                                    [this] { node_.getStringValue("missing"); });
}

TEST_F(RegistryValues, AMissingValueIsAnOpenErrorForTheReadingOfANumber) {
    expectError<Registry::OpenError>(398, "Unable to open requested value.",
                                     [this] { node_.getIntValue("missing"); });
}

TEST_F(RegistryValues, CaseIsIgnoredButForTheReadingOfText) {
    node_.updateIntValue("Name", 9);
    EXPECT_TRUE(node_.hasValue("nAME"));
    EXPECT_EQ(node_.getIntValue("nAME"), 9);
    expectError<Registry::NotFound>(345, "The requested value was not found.",
                                    [this] { node_.getStringValue("nAME"); });
    EXPECT_EQ(node_.getStringValue("Name"), bytes("\x09"));
}

TEST_F(RegistryValues, APartOfANameIsNotTheName) {
    node_.updateStringValue("name", withZero("x"));
    EXPECT_THROW(node_.getStringValue("nam"), Registry::NotFound);
    EXPECT_THROW(node_.getStringValue("names"), Registry::NotFound);
    EXPECT_THROW(node_.getStringValue(""), Registry::NotFound);
}

TEST_F(RegistryValues, TheEmptyNameIsTheDefaultValue) {
    EXPECT_FALSE(node_.hasValue(""));
    node_.updateStringValue("", withZero("default"));
    node_.updateStringValue("named", withZero("x"));
    EXPECT_TRUE(node_.hasValue(""));
    EXPECT_EQ(node_.getStringValue(""), bytes("default"));
    EXPECT_EQ(rawValue(path(), ""), (RawValue{REG_SZ, std::string("default\0", 8)}));
    node_.updateIntValue("", 8);
    EXPECT_EQ(node_.getIntValue(""), 8);
    node_.deleteValue("");
    EXPECT_FALSE(node_.hasValue(""));
    EXPECT_TRUE(node_.hasValue("named"));
}

TEST_F(RegistryValues, EachOfManyValuesIsFound) {
    for (int i = 0; i < 300; ++i) {
        node_.updateStringValue("value " + std::to_string(i), withZero(std::to_string(i)));
    }
    for (int i = 0; i < 300; ++i) {
        EXPECT_EQ(node_.getStringValue("value " + std::to_string(i)), bytes(std::to_string(i)));
    }
}

TEST_F(RegistryValues, AShortValueHasNothingLeftOfALongOneBeforeIt) {
    // They are enumerated in this order, by age as well as by name.
    setRawValue(path(), "a", {REG_BINARY, std::string(261, 'x')});
    setRawValue(path(), "b", {REG_BINARY, "y"});
    EXPECT_EQ(node_.getStringValue("b"), bytes("y"));
}

TEST_F(RegistryValues, EmbeddedZeroesAreStoredAndReadUpToTheFirst) {
    node_.updateStringValue("text", bytes(std::string("ab\0cd\0", 6)));
    EXPECT_EQ(rawValue(path(), "text"), (RawValue{REG_SZ, std::string("ab\0cd\0", 6)}));
    EXPECT_EQ(node_.getStringValue("text"), bytes("ab"));
}

TEST_F(RegistryValues, AnEmptyTextIsStoredWithSizeZero) {
    node_.updateStringValue("text", {});
    EXPECT_EQ(rawValue(path(), "text"), (RawValue{REG_SZ, ""}));
    EXPECT_EQ(node_.getStringValue("text"), bytes(""));
}

TEST_F(RegistryValues, ALoneZeroIsStoredAsIs) {
    node_.updateStringValue("text", withZero(""));
    EXPECT_EQ(rawValue(path(), "text"), (RawValue{REG_SZ, std::string(1, '\0')}));
    EXPECT_EQ(node_.getStringValue("text"), bytes(""));
}

TEST_F(RegistryValues, ThePlatformEndsATextThatHasNoZeroWhateverLiesBehindTheCallersBytes) {
    Registry::Bytes text = bytes("abcdefgh");
    text.resize(3); // and a letter follows them
    node_.updateStringValue("text", text);
    EXPECT_EQ(rawValue(path(), "text"), (RawValue{REG_SZ, std::string("abc\0", 4)}));
    EXPECT_EQ(node_.getStringValue("text"), bytes("abc"));
}

TEST_F(RegistryValues, LongTextsAreStoredWhole) {
    const std::string text(65000, 'x');
    node_.updateStringValue("text", withZero(text));
    EXPECT_EQ(rawValue(path(), "text").data.size(), 65001U);
}

TEST_F(RegistryValues, ANumberReadAsTextGivesItsLowBytesUpToAZero) {
    node_.updateIntValue("number", 0x00636261);
    EXPECT_EQ(node_.getStringValue("number"), bytes("abc"));
    node_.updateIntValue("number", 0x63006261);
    EXPECT_EQ(node_.getStringValue("number"), bytes("ab"));
    node_.updateIntValue("number", 0x64636261);
    EXPECT_EQ(node_.getStringValue("number"), bytes("abcd"));
    node_.updateIntValue("number", 0);
    EXPECT_EQ(node_.getStringValue("number"), bytes(""));
}

TEST_F(RegistryValues, ValuesOfEveryTypeAreReadAsText) {
    for (const DWORD type :
         {REG_NONE, REG_SZ, REG_EXPAND_SZ, REG_BINARY, REG_MULTI_SZ, REG_QWORD}) {
        setRawValue(path(), "value", {type, std::string("%TEMP%\0\0", 8)});
        EXPECT_EQ(node_.getStringValue("value"), bytes("%TEMP%")) << "type " << type;
    }
}

TEST_F(RegistryValues, AShortTextReadAsANumberIsOfTheWrongType) {
    for (const char* const text : {"", "a", "abc"}) {
        node_.updateStringValue("text", withZero(text));
        expectError<Registry::OpenError>(
            401,
            "type == REG_DWORD: Only REG_DWORD value types are supported in getIntValue function.",
            [this] { node_.getIntValue("text"); });
    }
}

TEST_F(RegistryValues, FourBytesOfAnotherTypeReadAsANumberAreOfTheWrongType) {
    setRawValue(path(), "bytes", {REG_BINARY, "abcd"});
    expectError<Registry::OpenError>(
        401, "type == REG_DWORD: Only REG_DWORD value types are supported in getIntValue function.",
        [this] { node_.getIntValue("bytes"); });
}

TEST_F(RegistryValues, ALongerTextReadAsANumberCannotBeOpened) {
    node_.updateStringValue("text", withZero("abcd"));
    expectError<Registry::OpenError>(398, "Unable to open requested value.",
                                     [this] { node_.getIntValue("text"); });
}

TEST_F(RegistryValues, TwoHundredSixtyOneBytesCanBeRead) {
    const std::string text(260, 'x');
    node_.updateStringValue("text", withZero(text));
    EXPECT_EQ(rawValue(path(), "text").data.size(), 261U);
    EXPECT_EQ(node_.getStringValue("text"), bytes(text));
}

TEST_F(RegistryValues, OneByteMoreCannot) {
    node_.updateStringValue("text", withZero(std::string(261, 'x')));
    EXPECT_EQ(rawValue(path(), "text").data.size(), 262U);
    EXPECT_TRUE(node_.hasValue("text"));
    expectError<Registry::OpenError>(350, "Unable to open requested value.",
                                     [this] { node_.getStringValue("text"); });
}

TEST_F(RegistryValues, AValueTooLongSpoilsTheSearchForThoseBehindIt) {
    // They are enumerated in this order, by age as well as by name.
    node_.updateStringValue("a", withZero("before"));
    node_.updateStringValue("m", withZero(std::string(261, 'x')));
    node_.updateStringValue("z", withZero("behind"));
    node_.updateIntValue("zz", 5);
    EXPECT_EQ(node_.getStringValue("a"), bytes("before"));
    expectError<Registry::OpenError>(350, "Unable to open requested value.",
                                     [this] { node_.getStringValue("z"); });
    expectError<Registry::OpenError>(350, "Unable to open requested value.",
                                     [this] { node_.getStringValue("missing"); });
    EXPECT_EQ(node_.getIntValue("zz"), 5) << "which is looked up, not searched for";
    node_.deleteValue("m");
    EXPECT_EQ(node_.getStringValue("z"), bytes("behind"));
}

TEST_F(RegistryValues, ANameOfTwoHundredSixtyBytesCanBeRead) {
    const std::string name(260, 'n');
    node_.updateStringValue(name, withZero("x"));
    EXPECT_EQ(node_.getStringValue(name), bytes("x"));
}

TEST_F(RegistryValues, ANameOneByteLongerCannot) {
    const std::string name(261, 'n');
    node_.updateStringValue(name, withZero("x"));
    EXPECT_TRUE(node_.hasValue(name));
    expectError<Registry::OpenError>(350, "Unable to open requested value.",
                                     [&] { node_.getStringValue(name); });
}

TEST_F(RegistryValues, DeletedValuesAreGone) {
    node_.updateStringValue("text", withZero("x"));
    node_.updateIntValue("number", 1);
    node_.deleteValue("TEXT");
    EXPECT_FALSE(node_.hasValue("text"));
    EXPECT_TRUE(node_.hasValue("number"));
}

TEST_F(RegistryValues, DeletingAMissingValueIsNotFound) {
    make("missing"); // a sub key is no value
    expectError<Registry::NotFound>(462, "Unable to delete given value.",
                                    [this] { node_.deleteValue("missing"); });
}

TEST_F(RegistryValues, BelongToTheirKeyAlone) {
    Registry subKey = make("a");
    subKey.updateIntValue("value", 1);
    EXPECT_FALSE(node_.hasValue("value"));
    EXPECT_FALSE(node_.hasValue("a\\value"));
    node_.updateIntValue("a\\value", 2);
    EXPECT_EQ(node_.getIntValue("a\\value"), 2) << "a backslash is nothing special in their names";
    EXPECT_EQ(subKey.getIntValue("value"), 1);
}

} // namespace
