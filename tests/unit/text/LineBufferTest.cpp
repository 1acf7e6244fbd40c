#include "ZOL/Framework/GenericLogger/detail/LineBuffer.h"

#include <algorithm>
#include <cstddef>
#include <cstdlib>
#include <cstring>
#include <new>
#include <string>

#include <gtest/gtest.h>

using ZOL::Framework::GenericLogger::detail::LineBuffer;

namespace {

/// How many arrays had a byte written after their end.
std::size_t overflows = 0;
/// How many arrays are allocated.
std::size_t allocated = 0;

} // namespace

// Without a sanitizer, nothing reports a write past the end of an array. Here guard bytes after
// each array do, which are checked when it is freed. A sanitizer needs the array alone. On Windows,
// these operators would not replace those of the C++ library.
#if !defined(ZOL_TEST_SANITIZED) && !defined(_WIN32)
#define ZOL_TEST_GUARDED_ARRAYS
#endif

#if defined(ZOL_TEST_GUARDED_ARRAYS)

namespace {

/// How many arrays were ever allocated.
std::size_t arrays = 0;
/// Whether an allocation of an array fails.
bool arraysFail = false;

constexpr std::size_t headerSize = alignof(std::max_align_t); // for the size of the array
constexpr std::size_t guardSize = 4096;
constexpr char guardByte = '\x5A';

void freeArray(void* array) {
    if (array == nullptr) {
        return;
    }
    char* const block = static_cast<char*>(array) - headerSize;
    std::size_t size = 0;
    std::memcpy(&size, block, sizeof size);
    const char* const guard = block + headerSize + size;
    if (!std::all_of(guard, guard + guardSize, [](char byte) { return byte == guardByte; })) {
        ++overflows;
    }
    --allocated;
    std::free(block);
}

} // namespace

void* operator new[](std::size_t size) {
    void* const memory = arraysFail ? nullptr : std::malloc(headerSize + size + guardSize);
    if (memory == nullptr) {
        throw std::bad_alloc();
    }
    ++arrays;
    ++allocated;
    char* const block = static_cast<char*>(memory);
    std::memcpy(block, &size, sizeof size);
    std::memset(block + headerSize + size, guardByte, guardSize);
    return block + headerSize;
}

void operator delete[](void* array) noexcept {
    freeArray(array);
}

void operator delete[](void* array, std::size_t) noexcept {
    freeArray(array);
}

#endif

namespace {

TEST(LineBuffers, WriteNothingPastTheEndOfTheirMemoryAndFreeAllOfIt) {
    const std::size_t overflowsBefore = overflows;
    const std::size_t allocatedBefore = allocated;
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
    EXPECT_EQ(overflows, overflowsBefore);
    EXPECT_EQ(allocated, allocatedBefore);
}

TEST(LineBuffers, HaveAsMuchSpaceAsWasPrepared) {
    const std::size_t before = overflows;
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
    EXPECT_EQ(overflows, before);
}

#if defined(ZOL_TEST_GUARDED_ARRAYS)

TEST(LineBuffers, AllocateOnlyForMoreThan400Characters) {
    const std::size_t before = arrays;
    LineBuffer line;
    const std::string text(400, 'x');
    line.append(text.data(), text.size());
    EXPECT_EQ(line.c_str(), text);
    EXPECT_EQ(arrays, before);
    line.append("x", 1);
    EXPECT_EQ(arrays, before + 1);
}

TEST(LineBuffers, AllocateRarelyWhileTheyGrowByOneCharacter) {
    const std::size_t before = arrays;
    LineBuffer line;
    for (int i = 0; i < 100000; ++i) {
        line.append("x", 1);
    }
    EXPECT_LE(arrays, before + 20);
}

TEST(LineBuffers, StayIncompleteAfterAnAllocationThatFailed) {
    LineBuffer line;
    std::string text(400, 'x');
    line.append(text.data(), text.size());
    EXPECT_FALSE(line.isIncomplete());
    arraysFail = true;
    EXPECT_THROW(line.append("lost", 4), std::bad_alloc);
    arraysFail = false;
    EXPECT_EQ(line.c_str(), text);
    EXPECT_TRUE(line.isIncomplete()) << "the zero is not written over it";
    line.append("more", 4);
    text += "more";
    EXPECT_EQ(line.c_str(), text);
    EXPECT_TRUE(line.isIncomplete()) << "a part is still missing";
}

#endif

} // namespace
