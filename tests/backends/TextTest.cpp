#include "Text.h"

#include <iterator>
#include <random>

#include <gtest/gtest.h>

#include "EscapedText.h"

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

TEST(Utf16, DecodesCharactersOfEveryLength) {
    EXPECT_EQ(utf16("a\u00e9\u20ac\U0001F600"), wide(u"a\u00e9\u20ac\U0001F600"));
    EXPECT_EQ(utf16("\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010ffff"),
              wide(u"\u007f\u0080\u07ff\u0800\uffff\U00010000\U0010ffff"));
    EXPECT_EQ(utf16(""), wide(u""));
}

TEST(Utf16, RejectsWhatIsNotUtf8) {
    EXPECT_THROW(utf16("a\xE9"), std::exception);
    EXPECT_THROW(utf16("\xED\xA0\x80"), std::exception);
}

/// U+FFFD, which replaces an invalid sequence.
const std::string replaced = "\xEF\xBF\xBD";

TEST(Escaped, EscapesZeroBytes) {
    EXPECT_EQ(escaped(std::string_view("a\0b", 3)), "a\\0b");
}

TEST(Escaped, EscapesLineEndsAndRemovesThoseAtTheEnd) {
    EXPECT_EQ(escaped("a\nb\r\nc\r\n\n"), "a\\nb\\r\\nc");
    EXPECT_EQ(escaped("\n"), "");
    EXPECT_EQ(escaped("\na"), "\\na");
    EXPECT_EQ(escaped(""), "");
    EXPECT_EQ(escaped("plain"), "plain");
}

TEST(Escaped, KeepsPrintableCharactersTabsAndBackslashes) {
    EXPECT_EQ(escaped("a\tb ~"), "a\tb ~");
    EXPECT_EQ(escaped("C:\\new\\x1B"), "C:\\new\\x1B");
    EXPECT_EQ(escaped("\u00e9\u20ac\U0001F600"), "\u00e9\u20ac\U0001F600");
    EXPECT_EQ(escaped("\u00e9\tb\\n"), "\u00e9\tb\\n");
}

TEST(Escaped, EscapesControlCharactersUpToTheirLimits) {
    EXPECT_EQ(escaped("\x01\x08\x0B\x1B[31m\x1F\x20"), "\\x01\\x08\\x0B\\x1B[31m\\x1F ");
    EXPECT_EQ(escaped("\x7E\x7F"), "~\\x7F");
    EXPECT_EQ(escaped("\u0080\u0085\u009f\u00a0"), "\\x80\\x85\\x9F\u00a0");
    EXPECT_EQ(escaped("\u2027\u2028\u2029\u202a"), "\u2027\\u2028\\u2029\u202a");
}

TEST(Escaped, KeepsTheTextAroundAnEscape) {
    EXPECT_EQ(escaped("before\x1Bin\u0085 between\u2028"
                      "after"),
              "before\\x1Bin\\x85 between\\u2028"
              "after");
}

TEST(Escaped, KeepsTheFirstAndTheLastCharacterOfEachLength) {
    const std::string limits = "\u00a0\u07ff\u0800\ud7ff\ue000\ufffd\uffff\U00010000\U0010ffff";
    EXPECT_EQ(escaped(limits), limits);
}

TEST(Escaped, ReplacesInvalidSequences) {
    EXPECT_EQ(escaped("a\x80"), "a" + replaced) << "a continuation byte alone";
    EXPECT_EQ(escaped("a\xBF z"), "a" + replaced + " z");
    EXPECT_EQ(escaped("\xC0\x80"), replaced) << "overlong";
    EXPECT_EQ(escaped("\xC1\xBF"), replaced) << "overlong";
    EXPECT_EQ(escaped("\xE0\x80\x80"), replaced) << "overlong";
    EXPECT_EQ(escaped("\xE0\x9F\xBF"), replaced) << "overlong";
    EXPECT_EQ(escaped("\xF0\x8F\xBF\xBF"), replaced) << "overlong";
    EXPECT_EQ(escaped("\xED\xA0\x80"), replaced) << "U+D800";
    EXPECT_EQ(escaped("\xED\xBF\xBF"), replaced) << "U+DFFF";
    EXPECT_EQ(escaped("\xF4\x90\x80\x80"), replaced) << "above U+10FFFF";
    EXPECT_EQ(escaped("\xF5z"), replaced + "z");
    EXPECT_EQ(escaped("\xFFz"), replaced + "z");
}

TEST(Escaped, ReplacesSequencesThatAreCutShort) {
    EXPECT_EQ(escaped("a\xC3"), "a" + replaced);
    EXPECT_EQ(escaped("a\xE2\x82"), "a" + replaced);
    EXPECT_EQ(escaped("a\xF0\x9F\x98"), "a" + replaced);
    EXPECT_EQ(escaped("\xC3\xA9\xE2\x82z"), "\u00e9" + replaced + "z");
    EXPECT_EQ(escaped("\xE2\x82\n\xE2"), replaced + "\\n" + replaced);
}

TEST(Escaped, ShowsATextInTheAnsiCodePageWithReplacements) {
    EXPECT_EQ(escaped("Caf\xE9 ge\xF6"
                      "ffnet: 5 \x80"),
              "Caf" + replaced + " ge" + replaced + "ffnet: 5 " + replaced);
}

TEST(Escaped, EscapesControlCharactersBesideInvalidSequences) {
    EXPECT_EQ(escaped("\xE9\x1B[2J\xC2\x85\\"), replaced + "\\x1B[2J\\x85\\");
}

TEST(Escaped, AppendsToALine) {
    std::string line = "line: ";
    appendEscaped(line, "plain");
    appendEscaped(line, " \x1B");
    appendEscaped(line, " \xFF");
    EXPECT_EQ(line, "line: plain \\x1B " + replaced);
}

/// Mostly bytes that matter in UTF-8, so that every kind of sequence occurs.
std::string randomText(std::minstd_rand& random) {
    constexpr unsigned char bytes[] = {'a',  ' ',  '\\', '\t', '\n', 0x1B, 0x7F, 0x80, 0x85,
                                       0x8F, 0x90, 0x9F, 0xA0, 0xA8, 0xA9, 0xBF, 0xC0, 0xC2,
                                       0xDF, 0xE0, 0xE2, 0xED, 0xEF, 0xF0, 0xF4, 0xF5, 0xFF};
    std::string text(random() % 12, '\0');
    for (char& character : text) {
        const auto value = random();
        character = static_cast<char>(value % 8 == 0 ? value >> 8 & 0xFFU
                                                     : bytes[value / 8 % std::size(bytes)]);
    }
    return text;
}

TEST(Escaped, MakesAnyBytesSafeAndIsStable) {
    std::minstd_rand random;
    for (int i = 0; i < 20000; ++i) {
        const std::string text = randomText(random);
        const std::string result = escaped(text);
        ASSERT_EQ(findEscapingError(text, result), "") << testing::PrintToString(text);
        ASSERT_EQ(escaped(result), result) << testing::PrintToString(text);
    }
}

TEST(EscapedWord, ContainsNothingThatEndsAWordOfASyslogLine) {
    EXPECT_EQ(escapedWord("shop"), "shop");
    EXPECT_EQ(escapedWord("my shop\tnew"), "my_shop_new");
    EXPECT_EQ(escapedWord("[x]:1-2.5"), "_x]_1-2.5");
    EXPECT_EQ(escapedWord("a\nb\x1B \xFF"), "a\\nb\\x1B_" + replaced);
    EXPECT_EQ(escapedWord(""), "-");
    EXPECT_EQ(escapedWord("\n"), "-");
}

std::string truncated(std::string text, std::size_t maxBytes) {
    truncateEscaped(text, maxBytes);
    return text;
}

TEST(TruncateEscaped, LeavesAShortTextUnchanged) {
    EXPECT_EQ(truncated("0123456789", 10), "0123456789");
    EXPECT_EQ(truncated("", 10), "");
    EXPECT_EQ(truncated("abcd\\u2028", 10), "abcd\\u2028");
}

TEST(TruncateEscaped, EndsALongTextWithThreeDotsWithinTheLimit) {
    EXPECT_EQ(truncated("0123456789x", 10), "0123456...");
    EXPECT_EQ(truncated("0123", 3), "...");
}

TEST(TruncateEscaped, NeverSplitsACharacter) {
    // Two bytes each; the limit falls into the fourth.
    EXPECT_EQ(truncated("\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4", 10), "\u00e4\u00e4\u00e4...");
    // Four bytes.
    EXPECT_EQ(truncated("\U0001f600\U0001f600\U0001f600", 10), "\U0001f600...");
}

TEST(TruncateEscaped, NeverSplitsAnEscape) {
    for (const std::string escape : {"\\n", "\\r", "\\0", "\\x1B", "\\x9F", "\\u2028", "\\u2029"}) {
        const std::string text = "0123456" + escape + "0123456789";
        for (std::size_t i = 0; i < escape.size(); ++i) {
            EXPECT_EQ(truncated(text, 10 + i), "0123456...") << escape << i;
        }
        EXPECT_EQ(truncated(text, 10 + escape.size()), "0123456" + escape + "...");
    }
    EXPECT_EQ(truncated("\\x1B\\x1B\\x1B\\x1B", 10), "\\x1B...");
}

TEST(TruncateEscaped, KeepsABackslashThatBeginsNoEscape) {
    EXPECT_EQ(truncated("C:\\a\\bcdefghijkl", 10), "C:\\a\\bc...");
}

} // namespace
