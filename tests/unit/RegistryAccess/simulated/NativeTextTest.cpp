#include "ZOL/RegistryAccess/NativeText.h"

#include <string>

#include <gtest/gtest.h>

using namespace ZOL::RegistryAccess;

namespace {

std::string allBytes() {
    std::string all;
    for (int byte = 0; byte < 256; ++byte) {
        all += static_cast<char>(byte);
    }
    return all;
}

TEST(NativeText, KeepsEveryByteOnItsWayToThePlatform) {
    EXPECT_EQ(toNative(allBytes()), allBytes());
    EXPECT_EQ(toNative(""), "");
}

TEST(NativeText, KeepsEveryByteOnItsWayFromThePlatform) {
    EXPECT_EQ(fromNative(allBytes()), allBytes());
    EXPECT_EQ(fromNative(""), "");
}

TEST(NativeText, FromWideTextIsAlwaysEmpty) {
    EXPECT_EQ(fromWide(L""), "");
    EXPECT_EQ(fromWide(L"text"), "");
    EXPECT_EQ(fromWide(std::wstring(1000, L'\x20ac')), "");
}

TEST(LastPathComponent, OfAnEmptyPathIsEmpty) {
    EXPECT_EQ(lastPathComponent(""), "");
}

TEST(LastPathComponent, OfAPathWithoutABackslashIsThePath) {
    EXPECT_EQ(lastPathComponent("key"), "key");
    EXPECT_EQ(lastPathComponent("with/slash"), "with/slash");
}

TEST(LastPathComponent, FollowsTheLastBackslash) {
    EXPECT_EQ(lastPathComponent("one\\two\\three"), "three");
    EXPECT_EQ(lastPathComponent("\\key"), "key");
    EXPECT_EQ(lastPathComponent("one\\\\two"), "two");
}

TEST(LastPathComponent, AfterATrailingBackslashIsEmpty) {
    EXPECT_EQ(lastPathComponent("one\\two\\"), "");
    EXPECT_EQ(lastPathComponent("\\"), "");
}

TEST(LastPathComponent, MayHaveAZeroInIt) {
    EXPECT_EQ(lastPathComponent(std::string("a\0b\\c\0d", 7)), std::string("c\0d", 3));
}

} // namespace
