#include "ZOL/Framework/Management/MemoryManager.h"

#include <cerrno>
#include <cstddef>
#include <cstdint>
#include <cstdlib>
#include <cstring>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

namespace MemoryManager = ZOL::Framework::Management::MemoryManager;

namespace {

static_assert(std::is_same_v<decltype(&MemoryManager::allocate), void* (*)(std::size_t)>);
static_assert(std::is_same_v<decltype(&MemoryManager::reallocate), void* (*)(void*, std::size_t)>);
static_assert(std::is_same_v<decltype(&MemoryManager::deallocate), void (*)(void*)>);

/// Sizes that no heap has, from the heap's own limit on.
constexpr std::size_t impossibleSizes[] = {0xFFFFFFFFFFFFFFE0, 0xFFFFFFFFFFFFFFE1, SIZE_MAX};

constexpr int notAnError = -1;

constexpr char content[] = "fifteen letters";

TEST(Blocks, HoldTheDataWrittenToThem) {
    for (const std::size_t size : {1U, 7U, 4096U, 1000000U}) {
        void* const block = MemoryManager::allocate(size);
        ASSERT_NE(block, nullptr);
        std::memset(block, 0x5A, size);
        EXPECT_EQ(static_cast<const unsigned char*>(block)[size - 1], 0x5A);
        MemoryManager::deallocate(block);
    }
}

TEST(Blocks, FitEveryType) {
    void* const block = MemoryManager::allocate(sizeof(std::max_align_t));
    EXPECT_EQ(reinterpret_cast<std::uintptr_t>(block) % alignof(std::max_align_t), 0U);
    MemoryManager::deallocate(block);
}

TEST(Blocks, OfNoBytesAreBlocksAllTheSame) {
    void* const first = MemoryManager::allocate(0);
    void* const second = MemoryManager::allocate(0);
    ASSERT_NE(first, nullptr);
    ASSERT_NE(second, nullptr);
    EXPECT_NE(first, second);
    MemoryManager::deallocate(first);
    MemoryManager::deallocate(second);
}

TEST(Blocks, OfAnImpossibleSizeAreNullWithErrnoAndNoException) {
    for (const std::size_t size : impossibleSizes) {
        errno = notAnError;
        void* block = &errno;
        EXPECT_NO_THROW(block = MemoryManager::allocate(size));
        const int error = errno;
        EXPECT_EQ(block, nullptr) << std::hex << size;
        EXPECT_EQ(error, ENOMEM) << std::hex << size;
    }
}

TEST(Blocks, GrowAndShrinkWithTheirContent) {
    auto* block = static_cast<char*>(MemoryManager::allocate(16));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, content, sizeof(content));
    for (const std::size_t size : {100000U, 17U, 1000000U, 16U}) {
        block = static_cast<char*>(MemoryManager::reallocate(block, size));
        ASSERT_NE(block, nullptr);
        EXPECT_STREQ(block, content);
        block[size - 1] = '\0';
    }
    MemoryManager::deallocate(block);
}

TEST(Blocks, ReallocatedFromNullAreNewOnes) {
    void* const block = MemoryManager::reallocate(nullptr, 100);
    ASSERT_NE(block, nullptr);
    std::memset(block, 0x5A, 100);
    MemoryManager::deallocate(block);
}

TEST(Blocks, ReallocatedFromNullToNoBytesAreBlocksAllTheSame) {
    void* const block = MemoryManager::reallocate(nullptr, 0);
    EXPECT_NE(block, nullptr);
    MemoryManager::deallocate(block);
}

TEST(Blocks, ReallocatedFromNullToAnImpossibleSizeAreNullWithErrno) {
    for (const std::size_t size : impossibleSizes) {
        errno = notAnError;
        void* block = &errno;
        EXPECT_NO_THROW(block = MemoryManager::reallocate(nullptr, size));
        const int error = errno;
        EXPECT_EQ(block, nullptr) << std::hex << size;
        EXPECT_EQ(error, ENOMEM) << std::hex << size;
    }
}

TEST(Blocks, ReallocatedToNoBytesAreFreed) {
    // Many times, so that a leak detector finds blocks that are not freed.
    for (int i = 0; i < 100; ++i) {
        void* const block = MemoryManager::allocate(1000);
        ASSERT_NE(block, nullptr);
        std::memset(block, 0x5A, 1000);
        errno = notAnError;
        EXPECT_EQ(MemoryManager::reallocate(block, 0), nullptr);
        EXPECT_EQ(errno, notAnError) << "nothing has failed";
    }
}

TEST(Blocks, SurviveAReallocationToAnImpossibleSize) {
    auto* block = static_cast<char*>(MemoryManager::allocate(16));
    ASSERT_NE(block, nullptr);
    std::memcpy(block, content, sizeof(content));
    for (const std::size_t size : impossibleSizes) {
        errno = notAnError;
        void* moved = &errno;
        EXPECT_NO_THROW(moved = MemoryManager::reallocate(block, size));
        const int error = errno;
        EXPECT_EQ(moved, nullptr) << std::hex << size;
        EXPECT_EQ(error, ENOMEM) << std::hex << size;
        EXPECT_STREQ(block, content);
    }
    block = static_cast<char*>(MemoryManager::reallocate(block, 1000));
    ASSERT_NE(block, nullptr) << "it is still the caller's";
    EXPECT_STREQ(block, content);
    MemoryManager::deallocate(block);
}

TEST(Blocks, NullMayBeFreedAnyNumberOfTimes) {
    errno = notAnError;
    EXPECT_NO_THROW(MemoryManager::deallocate(nullptr));
    EXPECT_NO_THROW(MemoryManager::deallocate(nullptr));
    EXPECT_EQ(errno, notAnError);
}

TEST(Blocks, AreOfTheCLibrarysHeap) {
    void* const ours = MemoryManager::allocate(100);
    ASSERT_NE(ours, nullptr);
    std::free(ours);

    MemoryManager::deallocate(std::malloc(100));

    auto* const block = static_cast<char*>(std::malloc(sizeof(content)));
    EXPECT_NE(block, nullptr);
    std::memcpy(block, content, sizeof(content));
    auto* const moved = static_cast<char*>(MemoryManager::reallocate(block, 100000));
    EXPECT_NE(moved, nullptr);
    EXPECT_STREQ(moved, content);
    std::free(moved);
}

TEST(Blocks, MayBeAllocatedAndFreedOnAnyThread) {
    std::vector<void*> blocks(4);
    std::vector<std::thread> threads;
    threads.reserve(blocks.size());
    for (void*& block : blocks) {
        threads.emplace_back([&block] {
            for (int i = 0; i < 100; ++i) {
                block = MemoryManager::reallocate(block, static_cast<std::size_t>(i) * 10 + 1);
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    for (void* const block : blocks) {
        EXPECT_NE(block, nullptr);
        std::memset(block, 0x5A, 991);
        MemoryManager::deallocate(block);
    }
}

} // namespace
