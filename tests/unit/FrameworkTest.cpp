#include "ZOL/Framework/Framework.h"

#include <atomic>
#include <cstdint>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "MsvcrtRand.h"

using support::MsvcrtRand;
using ZOL::Framework::Framework;

namespace {

/// Runs on a new thread, whose generator has its initial state.
template <typename Function>
void onFreshThread(Function function) {
    std::thread(function).join();
}

static_assert(std::is_empty_v<Framework> && !std::is_polymorphic_v<Framework>);

TEST(FrameworkObjects, AreCopiedAndAssignedWithoutAWarning) {
    const Framework original{};
    Framework copy(original); // NOLINT(performance-unnecessary-copy-initialization)
    EXPECT_EQ(&(copy = original), &copy);
}

/// The low 16 bits of the number of calls so far, including this one.
std::uint32_t completedCalls() {
    std::uint32_t number = 0;
    onFreshThread([&] { number = Framework::randomNumber(); });
    return (number - 41U + 1U) & 0xFFFFU;
}

TEST(RandomNumbers, AFreshThreadsFirstDrawIs41PlusTheNumberOfCallsSoFar) {
    const std::uint32_t calls = completedCalls();
    onFreshThread([&] { EXPECT_EQ(Framework::randomNumber(), (41U + calls) & 0xFFFFU); });
    onFreshThread([&] { EXPECT_EQ(Framework::randomNumber(), (41U + calls + 1U) & 0xFFFFU); });
}

TEST(RandomNumbers, AFreshThreadFollowsTheKnownSequence) {
    const std::uint32_t calls = completedCalls();
    onFreshThread([&] {
        const std::uint32_t known[] = {41, 18467, 6334, 26500, 19169, 15724, 11478, 29358};
        std::uint32_t call = calls;
        for (const std::uint32_t drawn : known) {
            EXPECT_EQ(Framework::randomNumber(), static_cast<unsigned short>(drawn + call++));
        }
    });
}

TEST(RandomNumbers, ThreadsAtTheSameStateGetDifferentNumbers) {
    std::uint32_t first = 0;
    std::uint32_t second = 0;
    onFreshThread([&] { first = Framework::randomNumber(); });
    onFreshThread([&] { second = Framework::randomNumber(); });
    EXPECT_EQ(second, (first + 1) & 0xFFFFU);
}

TEST(RandomNumbers, CallsFromAnyMixOfThreadsAreAllCounted) {
    const std::uint32_t before = completedCalls();
    constexpr std::uint32_t threadCount = 4;
    constexpr std::uint32_t callsPerThread = 50000;
    std::atomic<std::uint32_t> ready = 0;
    std::vector<std::thread> threads;
    for (std::uint32_t i = 0; i < threadCount; ++i) {
        threads.emplace_back([&ready] {
            ++ready;
            while (ready < threadCount) { // so that all draw at the same time
                std::this_thread::yield();
            }
            for (std::uint32_t call = 0; call < callsPerThread; ++call) {
                Framework::randomNumber();
            }
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(completedCalls(), (before + threadCount * callsPerThread + 1) & 0xFFFFU);
}

TEST(RandomNumbers, TheSumIsCutToItsLow16Bits) {
    const std::uint32_t before = completedCalls();
    bool wrapped = false;
    onFreshThread([&] {
        MsvcrtRand msvcrt(1);
        for (std::uint32_t call = before; call < before + 70000; ++call) {
            const std::uint32_t sum = msvcrt.next() + call;
            wrapped = wrapped || sum > 0xFFFF;
            ASSERT_EQ(Framework::randomNumber(), sum & 0xFFFF) << "at call " << call;
        }
    });
    EXPECT_TRUE(wrapped);
}

/// The first numbers of the process, drawn before main by the thread that loaded the module.
struct FirstNumbers {
    std::uint32_t first = Framework::randomNumber();
    std::uint32_t second = Framework::randomNumber();
    std::uint32_t third = Framework::randomNumber();
};

const FirstNumbers firstNumbers;

TEST(RandomNumbers, TheLoadingThreadStartsAtOneOfAThousandStates) {
    int matches = 0;
    for (std::uint32_t seed = 0; seed < 1000; ++seed) {
        MsvcrtRand msvcrt(seed);
        matches += msvcrt.next() == firstNumbers.first &&
                   msvcrt.next() + 1 == firstNumbers.second &&
                   msvcrt.next() + 2 == firstNumbers.third;
    }
    EXPECT_EQ(matches, 1);
}

TEST(FrameworkObjects, AssignmentChangesNothingAndReturnsTheLeftSide) {
    const Framework right;
    Framework left;
    EXPECT_EQ(&(left = right), &left);
}

} // namespace
