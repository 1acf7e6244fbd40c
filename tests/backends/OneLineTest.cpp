#include "OneLine.h"

#include <gtest/gtest.h>

using ZOL::Backends::oneLine;

namespace {

TEST(OneLine, ShowsAZero) {
    EXPECT_EQ(oneLine(std::string_view("a\0b", 3)), "a\\0b");
}

TEST(OneLine, ShowsLineBreaksWithinAndDropsThoseAtTheEnd) {
    EXPECT_EQ(oneLine("a\nb\r\nc\r\n\n"), "a\\nb\\r\\nc");
    EXPECT_EQ(oneLine("\n"), "");
    EXPECT_EQ(oneLine("plain"), "plain");
}

} // namespace
