#include "Text.h"

#include <gtest/gtest.h>

using namespace ZOL::Backends;
using ZOL::Framework::Management::WideString;

namespace {

WideString wide(std::u16string_view text) {
    return WideString(text.begin(), text.end());
}

TEST(Utf8, EncodesCharactersOfEveryLength) {
    EXPECT_EQ(utf8(wide(u"a\u00e9\u20ac\U0001F600")), "a\xC3\xA9\xE2\x82\xAC\xF0\x9F\x98\x80");
    EXPECT_EQ(utf8(wide(u"\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010ffff")),
              "\x7f\xC2\x80\xDF\xBF\xE0\xA0\x80\xEF\xBF\xBF\xF0\x90\x80\x80\xF4\x8F\xBF\xBF");
}

TEST(Utf8, ReplacesUnpairedSurrogates) {
    const char16_t high = 0xD83D;
    const char16_t low = 0xDE00;
    EXPECT_EQ(utf8(wide({&high, 1})), "\xEF\xBF\xBD");
    EXPECT_EQ(utf8(wide({&low, 1}) + wide(u"a")), "\xEF\xBF\xBD"
                                                  "a");
    EXPECT_EQ(utf8(wide({&high, 1}) + wide(u"a")), "\xEF\xBF\xBD"
                                                   "a");
}

TEST(EscapeControlCharacters, EscapesZeroBytes) {
    EXPECT_EQ(escapeControlCharacters(std::string_view("a\0b", 3)), "a\\0b");
}

TEST(EscapeControlCharacters, EscapesLineBreaksAndRemovesThoseAtTheEnd) {
    EXPECT_EQ(escapeControlCharacters("a\nb\r\nc\r\n\n"), "a\\nb\\r\\nc");
    EXPECT_EQ(escapeControlCharacters("\n"), "");
    EXPECT_EQ(escapeControlCharacters("plain"), "plain");
}

TEST(TruncateUtf8, LeavesAShortTextUnchanged) {
    EXPECT_EQ(truncateUtf8("0123456789", 10), "0123456789");
    EXPECT_EQ(truncateUtf8("", 10), "");
}

TEST(TruncateUtf8, EndsALongTextWithThreeDotsWithinTheLimit) {
    EXPECT_EQ(truncateUtf8("0123456789x", 10), "0123456...");
}

TEST(TruncateUtf8, NeverSplitsACharacter) {
    // Two bytes each; the limit falls into the fourth.
    EXPECT_EQ(truncateUtf8("\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4", 10), "\u00e4\u00e4\u00e4...");
    // Four bytes.
    EXPECT_EQ(truncateUtf8("\U0001f600\U0001f600\U0001f600", 10), "\U0001f600...");
}

} // namespace
