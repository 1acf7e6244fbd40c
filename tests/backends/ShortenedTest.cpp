#include "Shortened.h"

#include <gtest/gtest.h>

using ZOL::Backends::shortened;

namespace {

TEST(Shortened, LeavesATextThatFits) {
    EXPECT_EQ(shortened("0123456789", 10), "0123456789");
    EXPECT_EQ(shortened("", 10), "");
}

TEST(Shortened, EndsALongerTextWithThreeDotsWithinTheLimit) {
    EXPECT_EQ(shortened("0123456789x", 10), "0123456...");
}

TEST(Shortened, CutsBetweenCharactersOfSeveralBytes) {
    // Two bytes each; the limit falls into the fourth.
    EXPECT_EQ(shortened("\u00e4\u00e4\u00e4\u00e4\u00e4\u00e4", 10), "\u00e4\u00e4\u00e4...");
    // Four bytes.
    EXPECT_EQ(shortened("\U0001f600\U0001f600\U0001f600", 10), "\U0001f600...");
}

} // namespace
