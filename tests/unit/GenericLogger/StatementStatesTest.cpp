// The counts behind the statements that log some of their executions only.

#include <chrono>
#include <cstdint>
#include <optional>
#include <string_view>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/detail/EveryInterval.h"
#include "ZOL/Framework/GenericLogger/detail/EveryNth.h"
#include "ZOL/Framework/GenericLogger/detail/ExecutionCounter.h"
#include "ZOL/Framework/GenericLogger/detail/FileName.h"
#include "ZOL/Framework/GenericLogger/detail/FirstN.h"

using namespace ZOL::Framework::GenericLogger::detail;

namespace {

// An object of a module must not be destroyed before the last statement of the module.
static_assert(std::is_trivially_destructible_v<EveryNth>);
static_assert(std::is_trivially_destructible_v<EveryInterval>);
static_assert(std::is_trivially_destructible_v<FirstN>);

TEST(ThreadToken, IsTheSameWithinAThreadAndDiffersBetweenThreads) {
    const ThreadToken mine = thisThread();
    EXPECT_NE(mine, 0U);
    EXPECT_EQ(thisThread(), mine);
    std::thread([mine] { EXPECT_NE(thisThread(), mine); }).join();
}

TEST(ExecutionCounter, AddsWhatTheFirstAndOtherThreadsCount) {
    ExecutionCounter counter;
    EXPECT_EQ(counter.add(), 1U);
    std::thread([&] {
        EXPECT_EQ(counter.add(), 2U);
        EXPECT_EQ(counter.addUpTo(1000), 3U);
        EXPECT_EQ(counter.addUpTo(1), 4U);
    }).join();
    EXPECT_EQ(counter.addUpTo(1000), 5U);
    EXPECT_EQ(counter.addUpTo(1), 6U);
    EXPECT_EQ(counter.add(), 7U);
    EXPECT_EQ(counter.sum(), 7U);
}

/// Executes the statement that often and returns the sum of lines and of what they report.
std::uint64_t accountedFor(EveryNth& statement, long long n, int times) {
    std::uint64_t sum = 0;
    for (int i = 0; i < times; ++i) {
        if (const auto suppressed = statement.execute(n)) {
            sum += 1 + *suppressed;
        }
    }
    return sum;
}

TEST(ExecutionCounter, CountsEachExecutionOfSeveralThreads) {
    constexpr std::uint64_t times = 100'000;
    constexpr std::uint64_t threads = 4;
    ExecutionCounter counter;
    const auto count = [&] {
        for (std::uint64_t i = 0; i < times; ++i) {
            counter.add();
            counter.addUpTo(2 * i);
        }
    };
    std::vector<std::thread> others;
    for (std::uint64_t i = 1; i < threads; ++i) {
        others.emplace_back(count);
    }
    count();
    for (std::thread& other : others) {
        other.join();
    }
    EXPECT_EQ(counter.sum(), threads * 2 * times);
}

TEST(EveryNth, UsesASmallerNAtOnce) {
    for (const unsigned earlier : {6U, 51U, 5001U}) {
        EveryNth statement;
        EXPECT_EQ(accountedFor(statement, 1'000'000, static_cast<int>(earlier)), 1U);
        EXPECT_EQ(statement.execute(5), earlier - 1) << "all that were suppressed";
        EXPECT_EQ(accountedFor(statement, 5, 4), 0U);
        EXPECT_EQ(statement.execute(5), 4U);
        EXPECT_EQ(statement.execute(1), 0U);
        EXPECT_EQ(statement.execute(1), 0U);
    }
}

TEST(EveryNth, UsesALargerNAfterTheLastLine) {
    EveryNth statement;
    EXPECT_EQ(accountedFor(statement, 10, 21), 21U);
    EXPECT_EQ(accountedFor(statement, 100, 99), 0U);
    EXPECT_EQ(statement.execute(100), 99U);
    EXPECT_EQ(accountedFor(statement, 100, 99), 0U);
    EXPECT_EQ(statement.execute(100), 99U);
}

TEST(EveryNth, AccountsForAllExecutionsWhileNChanges) {
    EveryNth statement;
    std::uint64_t sum = 0;
    for (int i = 0; i < 1000; ++i) {
        sum += accountedFor(statement, 1 + i * 7 % 13, 1);
    }
    sum += accountedFor(statement, 1, 1);
    EXPECT_EQ(sum, 1001U);
}

// Executions of two threads, of which the first to count is the last to ask whether it logs.

TEST(EveryNth, AnExecutionLogsInPlaceOfAnEarlierOne) {
    EveryNth statement;
    const EveryNth::Execution first = statement.count(3);
    const EveryNth::Execution second = statement.count(3);
    EXPECT_EQ(statement.log(second, 3), 0U) << "the line of the first";
    EXPECT_EQ(statement.log(first, 3), std::nullopt);
    EXPECT_EQ(statement.execute(3), std::nullopt);
    EXPECT_EQ(statement.execute(3), 2U) << "the fourth, as if the first had logged";
}

TEST(EveryNth, AnExecutionWhoseLineIsTakenLogsInPlaceOfALaterOne) {
    EveryNth statement;
    const EveryNth::Execution first = statement.count(1);
    const EveryNth::Execution second = statement.count(1);
    EXPECT_EQ(statement.log(second, 1), 0U);
    EXPECT_EQ(statement.log(first, 1), 0U);
    EXPECT_EQ(statement.execute(1), 0U);
}

TEST(EveryInterval, ConvertsAllUnits) {
    EXPECT_EQ(EveryInterval::nanoseconds(std::chrono::nanoseconds(7)), 7);
    EXPECT_EQ(EveryInterval::nanoseconds(std::chrono::milliseconds(200)), 200'000'000);
    EXPECT_EQ(EveryInterval::nanoseconds(std::chrono::duration<double>(1.5)), 1'500'000'000);
    EXPECT_EQ(EveryInterval::nanoseconds(std::chrono::hours(24)), 86'400'000'000'000);
    EXPECT_EQ(EveryInterval::nanoseconds(std::chrono::seconds(-1)), 0);
    EXPECT_EQ(EveryInterval::nanoseconds(std::chrono::hours::max()), INT64_MAX);
    EXPECT_EQ(EveryInterval::nanoseconds(std::chrono::hours::min()), 0);
}

TEST(EveryInterval, LogsWhenTheIntervalHasPassed) {
    EveryInterval statement;
    EXPECT_EQ(statement.execute(10, 100), 0U);
    EXPECT_EQ(statement.execute(10, 109), std::nullopt);
    EXPECT_EQ(statement.execute(10, 110), 1U);
    EXPECT_EQ(statement.execute(10, 119), std::nullopt);
    EXPECT_EQ(statement.execute(10, 119), std::nullopt);
    EXPECT_EQ(statement.execute(10, 500), 2U);
    EXPECT_EQ(statement.execute(10, 509), std::nullopt) << "counted from the last line";
}

TEST(EveryInterval, LogsFirstAtAnyTime) {
    for (const std::int64_t now : {std::int64_t(-5), std::int64_t(0), std::int64_t(INT64_MAX)}) {
        EveryInterval statement;
        EXPECT_EQ(statement.execute(INT64_MAX, now), 0U) << now;
        EXPECT_EQ(statement.execute(INT64_MAX, now), std::nullopt) << now;
    }
}

TEST(EveryInterval, SuppressesAThreadWhoseTimeIsOlderThanTheLastLine) {
    EveryInterval statement;
    EXPECT_EQ(statement.execute(10, 100), 0U);
    EXPECT_EQ(statement.execute(10, 90), std::nullopt);
    EXPECT_EQ(statement.execute(0, 90), 1U) << "an interval of zero suppresses nothing";
}

TEST(EveryInterval, LogsWithAnIntervalOfZeroOrLess) {
    EveryInterval statement;
    EXPECT_EQ(statement.execute(0, 100), 0U);
    EXPECT_EQ(statement.execute(0, 100), 0U);
    EXPECT_EQ(statement.execute(INT64_MIN, 100), 0U);
}

TEST(FirstN, IsUsedUpAfterItsLastExecution) {
    FirstN statement;
    EXPECT_FALSE(statement.isUsedUp());
    EXPECT_TRUE(statement.execute(2));
    EXPECT_FALSE(statement.isUsedUp());
    EXPECT_TRUE(statement.execute(2));
    EXPECT_TRUE(statement.isUsedUp());
    EXPECT_FALSE(statement.execute(2));
}

TEST(FileName, IsThePathWithoutFolders) {
    EXPECT_EQ(fileName("Orders.cpp"), "Orders.cpp");
    EXPECT_EQ(fileName("/src/shop/Orders.cpp"), "Orders.cpp");
    EXPECT_EQ(fileName("C:\\src\\shop\\Orders.cpp"), "Orders.cpp");
    EXPECT_EQ(fileName("C:\\src/shop/Orders.cpp"), "Orders.cpp");
    EXPECT_EQ(fileName(""), "");
}

} // namespace
