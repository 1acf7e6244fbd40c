#include "RegistryTest.h"

using support::Lines;
using support::summaryOf;
using support::text;
using support::thrownBy;

namespace {

class GetStringValue : public support::NodeTest {
protected:
    std::string get(const std::string& name) { return text(own->getStringValue(name)); }
    std::string failureOf(const std::string& name) {
        return summaryOf(thrownBy([&] { get(name); }));
    }
};

TEST_F(GetStringValue, WalksTheValuesWithFreshBuffersUpToTheWantedOne) {
    key.setValue("first", REG_SZ, std::string(261, 'x'));
    key.setValue(std::string(260, 'n'), REG_SZ, "second");
    key.setValue("third", REG_SZ, std::string("text\0", 5));
    key.setValue("fourth", REG_SZ, "not looked at");
    EXPECT_EQ(get("third"), "text");
    EXPECT_EQ(platform.takeCalls(),
              (Lines{"RegEnumValueA(k1, 0, zeros, 261, null, type, zeros, 261)",
                     "RegEnumValueA(k1, 1, zeros, 261, null, type, zeros, 261)",
                     "RegEnumValueA(k1, 2, zeros, 261, null, type, zeros, 261)"}));
}

TEST_F(GetStringValue, OfAMissingValueIsNotFoundAfterTheLastValue) {
    key.setValue("one", REG_SZ, "x");
    key.setValue("two", REG_SZ, "y");
    EXPECT_EQ(failureOf("missing"), "NotFound 345");
    EXPECT_EQ(platform.takeCalls().size(), 3U);
}

TEST_F(GetStringValue, WalksAsFarAsAThousandValues) {
    for (int i = 0; i < 1000; ++i) {
        key.setValue("value " + std::to_string(i), REG_SZ, std::to_string(i));
    }
    EXPECT_EQ(get("value 999"), "999");
    EXPECT_EQ(platform.takeCalls().size(), 1000U);
}

TEST_F(GetStringValue, ComparesNamesWithTheirCase) {
    key.setValue("Name", REG_SZ, "x");
    EXPECT_EQ(failureOf("name"), "NotFound 345");
    EXPECT_EQ(failureOf("NAME"), "NotFound 345");
    EXPECT_EQ(get("Name"), "x");
    EXPECT_TRUE(own->hasValue("name"));
}

TEST_F(GetStringValue, ComparesNamesOverTheirWholeLength) {
    key.setValue("name and more", REG_SZ, "longer");
    key.setValue("nam", REG_SZ, "shorter");
    EXPECT_EQ(failureOf("name"), "NotFound 345");
    key.setValue("name", REG_SZ, "equal");
    EXPECT_EQ(get("name"), "equal");
}

TEST_F(GetStringValue, ComparesTheBytesOfNamesBeyondAscii) {
    key.setValue("\xe4", REG_SZ, "small");
    key.setValue("\xc4", REG_SZ, "capital");
    EXPECT_EQ(get("\xc4"), "capital");
}

TEST_F(GetStringValue, TakesTheNamesLengthFromThePlatformAndNotFromAZero) {
    key.setValue(std::string("name\0tail", 9), REG_SZ, "with a zero in its name");
    EXPECT_EQ(failureOf("name"), "NotFound 345");
    EXPECT_EQ(get(std::string("name\0tail", 9)), "with a zero in its name");
}

TEST_F(GetStringValue, CutsTheNameToTheLengthThatThePlatformReports) {
    key.setValue("name and more", REG_SZ, "text");
    platform.misstateLengths(4, 4);
    EXPECT_EQ(get("name"), "text");
}

TEST_F(GetStringValue, CutsTheDataAtItsFirstZeroForEveryLengthThatThePlatformReports) {
    key.setValue("name", REG_SZ, std::string("text\0behind", 11));
    for (const DWORD reported : {0U, 1U, 4U, 11U, 261U, 100000U}) {
        platform.misstateLengths(4, reported);
        EXPECT_EQ(get("name"), "text") << reported;
    }
}

TEST_F(GetStringValue, ReadsTheDefaultValueByTheEmptyName) {
    key.setValue("other", REG_SZ, "other");
    key.setValue("", REG_SZ, "default");
    EXPECT_EQ(get(""), "default");
}

TEST_F(GetStringValue, DoesNotTakeAnotherValueForTheDefaultOne) {
    key.setValue("other", REG_SZ, "other");
    EXPECT_EQ(failureOf(""), "NotFound 345");
}

TEST_F(GetStringValue, ReturnsTheTextBeforeTheFirstZeroWithoutATerminator) {
    key.setValue("name", REG_SZ, std::string("before\0behind\0", 14));
    EXPECT_EQ(get("name"), "before");
    key.setValue("name", REG_SZ, std::string("\0behind", 7));
    EXPECT_EQ(get("name"), "");
}

TEST_F(GetStringValue, ReadsTextThatHasNoTerminator) {
    key.setValue("name", REG_SZ, "unterminated");
    EXPECT_EQ(get("name"), "unterminated");
}

TEST_F(GetStringValue, OfEmptyDataIsEmpty) {
    key.setValue("name", REG_SZ, "");
    EXPECT_EQ(get("name"), "");
}

TEST_F(GetStringValue, KeepsBytesBeyondAscii) {
    std::string all;
    for (int byte = 1; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    key.setValue("name", REG_SZ, all);
    EXPECT_EQ(get("name"), all);
}

TEST_F(GetStringValue, TakesAnyTypeCutAtTheFirstZero) {
    key.setValue("number", REG_DWORD, std::string("\x41\x42\0\x43", 4));
    key.setValue("lists", REG_MULTI_SZ, std::string("one\0two\0\0", 9));
    key.setValue("bytes", REG_BINARY, "\xff\xfe");
    key.setValue("none", REG_NONE, "");
    key.setValue("unknown", 0xabcdef, "x");
    EXPECT_EQ(get("number"), "AB");
    EXPECT_EQ(get("lists"), "one");
    EXPECT_EQ(get("bytes"), "\xff\xfe");
    EXPECT_EQ(get("none"), "");
    EXPECT_EQ(get("unknown"), "x");
}

TEST_F(GetStringValue, ReadsAsMuchAs261BytesWithTheirTerminator) {
    key.setValue("name", REG_SZ, std::string(260, 'x') + '\0');
    EXPECT_EQ(get("name"), std::string(260, 'x'));
}

TEST_F(GetStringValue, ReadsNothingAfter261BytesWithoutAZero) {
    key.setValue("name", REG_BINARY, std::string(261, 'x'));
    EXPECT_EQ(get("name"), std::string(261, 'x'));
}

TEST_F(GetStringValue, EndsAtMoreThan261BytesOfDataOfTheWantedValue) {
    key.setValue("name", REG_SZ, std::string(262, 'x'));
    EXPECT_EQ(failureOf("name"), "OpenError 350");
    EXPECT_EQ(platform.takeCalls().size(), 1U) << "no second attempt";
}

TEST_F(GetStringValue, EndsAtMoreThan261BytesOfDataOfAnEarlierValue) {
    key.setValue("long", REG_BINARY, std::string(262, 'x'));
    key.setValue("name", REG_SZ, "text");
    EXPECT_EQ(failureOf("name"), "OpenError 350");
    EXPECT_EQ(platform.takeCalls().size(), 1U);
}

TEST_F(GetStringValue, IgnoresALongValueAfterTheWantedOne) {
    key.setValue("name", REG_SZ, "text");
    key.setValue("long", REG_BINARY, std::string(262, 'x'));
    EXPECT_EQ(get("name"), "text");
}

TEST_F(GetStringValue, PassesNamesOf260BytesAndEndsAtALongerOne) {
    key.setValue(std::string(260, 'n'), REG_SZ, "260");
    EXPECT_EQ(get(std::string(260, 'n')), "260");
    key.setValue(std::string(261, 'n'), REG_SZ, "261");
    key.setValue("name", REG_SZ, "text");
    EXPECT_EQ(failureOf("name"), "OpenError 350");
}

TEST_F(GetStringValue, ComparesANameThatFillsTheBufferToItsLastByte) {
    platform.leaveOutTerminators();
    key.setValue(std::string(260, 'n') + 'x', REG_SZ, "x");
    key.setValue(std::string(260, 'n') + 'y', REG_SZ, "y");
    EXPECT_EQ(get(std::string(260, 'n') + 'y'), "y");
    EXPECT_EQ(failureOf(std::string(260, 'n')), "NotFound 345");
}

TEST_F(GetStringValue, ReportsAFailureInTheMiddleOfTheEnumeration) {
    key.setValue("one", REG_SZ, "x");
    key.setValue("two", REG_SZ, "y");
    const std::vector<std::pair<LONG, std::string>> expected = {{5, "AccessDenied 342"},
                                                                {259, "NotFound 345"},
                                                                {2, "OpenError 350"},
                                                                {234, "OpenError 350"},
                                                                {-1, "OpenError 350"}};
    for (const auto& [code, failure] : expected) {
        platform.answer(2, code);
        EXPECT_EQ(failureOf("two"), failure) << code;
        platform.answerTruly();
    }
}

} // namespace
