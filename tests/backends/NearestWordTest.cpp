#include "NearestWord.h"

#include <string>

#include <gtest/gtest.h>

using namespace ZOL::Backends;

namespace {

const std::vector<std::string_view> words{"tcp", "udp", "ERROR", "WARNING"};

TEST(NearestWord, MayDifferInOneOfThreeLetters) {
    EXPECT_EQ(nearestWord("tdp", words), "tcp") << "the first one of two";
    EXPECT_EQ(nearestWord("up", words), "udp");
    EXPECT_EQ(nearestWord("uddp", words), "udp");
    EXPECT_EQ(nearestWord("WERNIMG", words), "WARNING");
    EXPECT_EQ(nearestWord("WERNIMK", words), "") << "three of seven letters";
    EXPECT_EQ(nearestWord("xyp", words), "") << "two of three letters";
    EXPECT_EQ(nearestWord("sctp", words), "") << "two errors";
    EXPECT_EQ(nearestWord("quic", words), "");
}

TEST(NearestWord, IsTheOneWithTheFewestOtherLetters) {
    EXPECT_EQ(nearestWord("local12", {"local", "local11", "local1"}), "local11");
    EXPECT_EQ(nearestWord("ab", {"abcdef", "abc", "abcd"}), "abc");
}

TEST(NearestWord, CountsTwoExchangedLettersOnce) {
    EXPECT_EQ(nearestWord("upd", words), "udp");
    EXPECT_EQ(nearestWord("ERORR", words), "ERROR");
}

TEST(NearestWord, MayBeCompletedOrShortened) {
    EXPECT_EQ(nearestWord("WARN", words), "WARNING");
    EXPECT_EQ(nearestWord("e", words), "ERROR");
    EXPECT_EQ(nearestWord("WARNINGLEVEL", words), "WARNING");
}

TEST(NearestWord, IgnoresCase) {
    EXPECT_EQ(nearestWord("Warnng", words), "WARNING");
    EXPECT_EQ(nearestWord("UPD", words), "udp");
}

TEST(NearestWord, IsEmptyForAnEmptyOrVeryLongWord) {
    EXPECT_EQ(nearestWord("", words), "");
    EXPECT_EQ(nearestWord("", {"a"}), "");
    EXPECT_EQ(nearestWord("b", {"a"}), "") << "no letter is the same";
    EXPECT_EQ(nearestWord("WARNING" + std::string(1000000, 'x'), words), "");
    EXPECT_EQ(nearestWord("WARNING", {}), "");
}

} // namespace
