#include "files/WriteBuffer.h"

#include <string>

#include <gtest/gtest.h>

using ZOL::Backends::WriteBuffer;

namespace {

TEST(WriteBuffer, KeepsLinesInOrder) {
    WriteBuffer buffer(10);
    EXPECT_EQ(buffer.text(), "");
    EXPECT_TRUE(buffer.add("ab\n"));
    EXPECT_TRUE(buffer.add("cd\n"));
    EXPECT_EQ(buffer.text(), "ab\ncd\n");
}

TEST(WriteBuffer, TakesNoLineForWhichThereIsNoRoom) {
    WriteBuffer buffer(4);
    EXPECT_FALSE(buffer.add("1234\n"));
    EXPECT_TRUE(buffer.add("123\n"));
    EXPECT_FALSE(buffer.add("\n"));
    EXPECT_EQ(buffer.text(), "123\n");
}

TEST(WriteBuffer, HasRoomAgainWhenItIsEmpty) {
    WriteBuffer buffer(4);
    ASSERT_TRUE(buffer.add("ab\n"));
    buffer.setBegin(2);
    EXPECT_EQ(buffer.text(), "\n");
    EXPECT_EQ(buffer.begin(), 2U);
    EXPECT_FALSE(buffer.add("c\n"));
    buffer.setBegin(3);
    EXPECT_EQ(buffer.text(), "");
    EXPECT_EQ(buffer.begin(), 0U);
    EXPECT_TRUE(buffer.add("abc\n"));
    buffer.clear();
    EXPECT_EQ(buffer.text(), "");
    EXPECT_TRUE(buffer.add("abc\n"));
}

TEST(WriteBuffer, MayBeginBehindItsEnd) {
    WriteBuffer buffer(4);
    ASSERT_TRUE(buffer.add("ab\n"));
    buffer.setBegin(100); // the size of a file that somebody else appended to tells so
    EXPECT_EQ(buffer.text(), "");
    EXPECT_TRUE(buffer.add("abc\n"));
    EXPECT_EQ(buffer.text(), "abc\n");
}

} // namespace
