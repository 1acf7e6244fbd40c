#include <new>

#include "RegistryTest.h"
#include "ZOL/RegistryAccess/ValueEnumeration.h"

using support::Lines;
using support::RegistryKey;
using ZOL::RegistryAccess::EnumeratedValue;
using ZOL::RegistryAccess::Registry;

namespace {

/// Copies from the key "source" (k2) to that of the node (k1).
class CopyValuesFrom : public support::NodeTest {
protected:
    CopyValuesFrom() : source(*platform.user().make("source")) {}

    void copy() {
        const Registry from = node("source");
        own->copyValuesFrom(from);
        calls = platform.takeCalls();
    }

    RegistryKey& source;
    Lines calls;
};

TEST_F(CopyValuesFrom, WritesEachValueAsItIsReadIntoFreshBuffers) {
    source.setValue("z", REG_BINARY, std::string(261, 'x'));
    source.setValue(std::string(260, 'n'), REG_SZ, std::string("text\0", 5));
    copy();
    EXPECT_EQ(calls,
              (Lines{"RegEnumValueA(k2, 0, zeros, 261, null, type, zeros, 261)",
                     "RegSetValueExA(k1, \"z\", 0, 3, \"" + std::string(261, 'x') + "\", 261)",
                     "RegEnumValueA(k2, 1, zeros, 261, null, type, zeros, 261)",
                     "RegSetValueExA(k1, \"" + std::string(260, 'n') + "\", 0, 1, \"text<00>\", 5)",
                     "RegEnumValueA(k2, 2, zeros, 261, null, type, zeros, 261)"}));
    EXPECT_EQ(key.listing(), source.listing());
}

TEST_F(CopyValuesFrom, KeepsTypesAndEmbeddedZeros) {
    source.setValue("", REG_SZ, std::string("\0", 1));
    source.setValue("number", REG_DWORD, std::string("\1\0\0\0", 4));
    source.setValue("long number", REG_QWORD, std::string("\1\0\0\0\0\0\0\x80", 8));
    source.setValue("list", REG_MULTI_SZ, std::string("one\0two\0\0", 9));
    source.setValue("expand", REG_EXPAND_SZ, std::string("%A%\0", 4));
    source.setValue("bytes", REG_BINARY, std::string("\0\1\0\2\0", 5));
    source.setValue("none", REG_NONE, "");
    source.setValue("unknown", 0xfedcba98, "x");
    copy();
    EXPECT_EQ(key.listing(), source.listing());
}

TEST_F(CopyValuesFrom, PassesTheSizeOfDataThatHasNoTerminator) {
    source.setValue("text", REG_SZ, "abc");
    copy();
    EXPECT_EQ(calls.at(1), "RegSetValueExA(k1, \"text\", 0, 1, \"abc\", 3)");
}

TEST_F(CopyValuesFrom, AddsNoTerminatorTo261BytesOfText) {
    source.setValue("text", REG_SZ, std::string(261, 'x'));
    copy();
    EXPECT_EQ(calls.at(1),
              "RegSetValueExA(k1, \"text\", 0, 1, \"" + std::string(261, 'x') + "\", 261)");
    EXPECT_EQ(key.listing(), source.listing());
}

TEST(EnumeratedValues, HaveAByteThatIsNotZeroAfterTheirData) {
    // Zeros, so that padding in this place would be zero too.
    alignas(EnumeratedValue) char storage[sizeof(EnumeratedValue)] = {};
    const auto* const value = new (storage) EnumeratedValue;
    const std::ptrdiff_t data = value->data.data() - storage;
    EXPECT_NE(storage[static_cast<std::size_t>(data) + value->data.size()], '\0');
}

TEST_F(CopyValuesFrom, OverwritesWhatHasTheSameNameAndLeavesTheRest) {
    key.setValue("Same", REG_SZ, "old");
    key.setValue("other", REG_SZ, "other");
    source.setValue("sAME", REG_BINARY, "new");
    copy();
    EXPECT_EQ(key.listing(), (Lines{"Same=3:new", "other=1:other"}));
}

TEST_F(CopyValuesFrom, CopiesNoSubKeys) {
    source.make("sub")->setValue("deep", REG_SZ, "x");
    copy();
    EXPECT_EQ(key.listing(), Lines());
}

TEST_F(CopyValuesFrom, OfAKeyWithoutValuesDoesNothing) {
    copy();
    EXPECT_EQ(calls, (Lines{"RegEnumValueA(k2, 0, zeros, 261, null, type, zeros, 261)"}));
}

TEST_F(CopyValuesFrom, LeavesTheSourceAsItWas) {
    key.setValue("own", REG_SZ, "x");
    source.setValue("value", REG_SZ, "y");
    copy();
    EXPECT_EQ(source.listing(), (Lines{"value=1:y"}));
}

TEST_F(CopyValuesFrom, OfTheNodeItselfChangesNothing) {
    key.setValue("one", REG_BINARY, "x");
    key.setValue("two", REG_BINARY, "y");
    const Lines before = key.listing();
    own->copyValuesFrom(*own);
    EXPECT_EQ(key.listing(), before);
}

TEST_F(CopyValuesFrom, StopsSilentlyAtAValueThatIsTooLong) {
    source.setValue("one", REG_BINARY, "x");
    source.setValue("two", REG_BINARY, std::string(262, 'x'));
    source.setValue("three", REG_BINARY, "y");
    copy();
    EXPECT_EQ(key.listing(), (Lines{"one=3:x"}));
    EXPECT_EQ(calls.size(), 3U);
}

TEST_F(CopyValuesFrom, StopsSilentlyAtANameThatIsTooLong) {
    source.setValue(std::string(261, 'n'), REG_BINARY, "x");
    source.setValue("two", REG_BINARY, "y");
    copy();
    EXPECT_EQ(key.listing(), Lines());
}

TEST_F(CopyValuesFrom, KeepsAll261BytesOfANameWithoutAZero) {
    platform.leaveOutTerminators();
    source.setValue(std::string(260, 'n') + 'x', REG_BINARY, "x");
    copy();
    EXPECT_EQ(key.listing(), source.listing());
}

TEST_F(CopyValuesFrom, StopsSilentlyAtAnyFailureOfARead) {
    source.setValue("one", REG_BINARY, "x");
    source.setValue("two", REG_BINARY, "y");
    for (const LONG code : {2, 5, 6, 87, 234, 259, 99999}) {
        key.values.clear();
        platform.answer("RegEnumValueA", 2, code);
        copy();
        EXPECT_EQ(key.listing(), (Lines{"one=3:x"})) << code;
        EXPECT_EQ(calls.size(), 3U) << code;
        platform.answerTruly();
    }
}

TEST_F(CopyValuesFrom, StopsSilentlyAtAnyFailureOfAWrite) {
    source.setValue("one", REG_BINARY, "x");
    source.setValue("two", REG_BINARY, "y");
    source.setValue("three", REG_BINARY, "z");
    for (const LONG code : {2, 5, 6, 87, 234, 259, 99999}) {
        key.values.clear();
        platform.answer("RegSetValueExA", 2, code);
        copy();
        EXPECT_EQ(key.listing(), (Lines{"one=3:x"})) << code;
        EXPECT_EQ(calls.size(), 4U) << code;
        platform.answerTruly();
    }
}

TEST_F(CopyValuesFrom, CutsTheNameToTheLengthThatThePlatformReports) {
    source.setValue("name and more", REG_BINARY, "bytes");
    platform.misstateLengths(4, 3);
    copy();
    EXPECT_EQ(key.listing(), (Lines{"name=3:byt"}));
}

TEST_F(CopyValuesFrom, StopsAtTheFirstValueWithoutWriteAccess) {
    source.setValue("one", REG_BINARY, "x");
    source.setValue("two", REG_BINARY, "y");
    platform.answerAll("RegSetValueExA", ERROR_ACCESS_DENIED);
    copy();
    EXPECT_EQ(key.listing(), Lines());
    EXPECT_EQ(calls.size(), 2U);
}

} // namespace
