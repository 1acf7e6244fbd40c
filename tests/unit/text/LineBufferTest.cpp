#include "ZOL/Framework/GenericLogger/detail/LineBuffer.h"

#include <cstddef>
#include <cstring>
#include <new>
#include <string>

#include <gtest/gtest.h>

#include "GuardedArrays.h"

namespace GuardedArrays = support::GuardedArrays;
using ZOL::Framework::GenericLogger::detail::LineBuffer;

namespace {

TEST(LineBuffers, WriteNothingPastTheEndOfTheirMemoryAndFreeAllOfIt) {
    const std::size_t overflowsBefore = GuardedArrays::overflows();
    const std::size_t allocatedBefore = GuardedArrays::allocated();
    for (const std::size_t first : {0U, 1U, 300U, 399U, 400U}) {
        for (const std::size_t second : {1U, 99U, 100U, 101U, 399U, 400U, 401U, 500U, 600U, 900U}) {
            for (const std::size_t third : {0U, 1U, 99U, 300U, 700U, 1500U, 3000U}) {
                std::string expected;
                LineBuffer line;
                for (const std::size_t size : {first, second, third}) {
                    const std::string text(size, static_cast<char>('a' + size % 26));
                    line.append(text.data(), text.size());
                    expected += text;
                    ASSERT_EQ(line.view(), expected) << first << ' ' << second << ' ' << third;
                    ASSERT_EQ(line.c_str(), expected) << first << ' ' << second << ' ' << third;
                }
            }
        }
    }
    EXPECT_EQ(GuardedArrays::overflows(), overflowsBefore);
    EXPECT_EQ(GuardedArrays::allocated(), allocatedBefore);
}

TEST(LineBuffers, HaveAsMuchSpaceAsWasPrepared) {
    const std::size_t before = GuardedArrays::overflows();
    for (const std::size_t size : {1U, 16U, 400U, 401U, 1000U}) {
        LineBuffer line;
        std::string expected;
        for (int i = 0; i < 100; ++i) {
            char* const begin = line.prepare(size);
            std::memset(begin, 'x', size);
            const std::size_t kept = size - size / 2;
            line.commit(begin + kept);
            expected.append(kept, 'x');
            ASSERT_EQ(line.c_str(), expected) << size;
        }
    }
    EXPECT_EQ(GuardedArrays::overflows(), before);
}

#if ZOL_TEST_GUARDED_ARRAYS

TEST(LineBuffers, AllocateOnlyForMoreThan400Characters) {
    const std::size_t before = GuardedArrays::allocations();
    LineBuffer line;
    const std::string text(400, 'x');
    line.append(text.data(), text.size());
    EXPECT_EQ(line.c_str(), text);
    EXPECT_EQ(GuardedArrays::allocations(), before);
    line.append("x", 1);
    EXPECT_EQ(GuardedArrays::allocations(), before + 1);
}

TEST(LineBuffers, AllocateRarelyWhileTheyGrowByOneCharacter) {
    const std::size_t before = GuardedArrays::allocations();
    LineBuffer line;
    for (int i = 0; i < 100000; ++i) {
        line.append("x", 1);
    }
    EXPECT_LE(GuardedArrays::allocations(), before + 20);
}

TEST(LineBuffers, StayIncompleteAfterAnAllocationThatFailed) {
    LineBuffer line;
    std::string text(400, 'x');
    line.append(text.data(), text.size());
    EXPECT_FALSE(line.isIncomplete());
    GuardedArrays::fail(true);
    EXPECT_THROW(line.append("lost", 4), std::bad_alloc);
    GuardedArrays::fail(false);
    EXPECT_EQ(line.c_str(), text);
    EXPECT_TRUE(line.isIncomplete()) << "the zero is not written over it";
    line.append("more", 4);
    text += "more";
    EXPECT_EQ(line.c_str(), text);
    EXPECT_TRUE(line.isIncomplete()) << "a part is still missing";
}

#endif

} // namespace
