// The statements that log some of their executions only.

#include <chrono>
#include <cstddef>
#include <functional>
#include <iomanip>
#include <limits>
#include <regex>
#include <stdexcept>
#include <string>
#include <thread>
#include <type_traits>
#include <vector>

#include <gtest/gtest.h>

#include "InlineStatements.h"

#include "ZOL/Framework/GenericLogger/LogStatements.h"
#include "ZOL/Testing/CapturedLog.h"

using namespace ZOL::Framework::GenericLogger;
using namespace std::chrono_literals;

namespace {

constexpr int threads = 16;

void onThreads(const std::function<void()>& work) {
    std::vector<std::thread> started;
    started.reserve(threads);
    for (int i = 0; i < threads; ++i) {
        started.emplace_back(work);
    }
    for (std::thread& thread : started) {
        thread.join();
    }
}

class LogStatements : public testing::Test {
protected:
    // The CapturedLog opens all levels.
    LogStatements() { log->minLogLevel(LOG_LEVEL_INFO); }

    /// The texts of the lines logged so far.
    std::vector<std::string> texts() const {
        std::vector<std::string> texts;
        for (const ZOL::Testing::CapturedMessage& message : captured) {
            texts.push_back(message.text);
        }
        return texts;
    }

    /// The sum of the numbers of suppressed executions in the lines.
    long long suppressed() const {
        static const std::regex number(R"( \((\d+) suppressed\)$)");
        long long sum = 0;
        std::smatch match;
        for (const std::string& text : texts()) {
            if (std::regex_search(text, match, number)) {
                sum += std::stoll(match[1]);
            }
        }
        return sum;
    }

    ZOL::Testing::CapturedLog captured;
    Logger* const log = Logger::getLogger("LogStatements");
};

using Texts = std::vector<std::string>;

TEST_F(LogStatements, EveryNLogsTheFirstAndThenEachNthWithTheNumberOfSuppressedOnes) {
    for (int i = 0; i < 7; ++i) {
        ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, 3) << "number " << i;
    }
    EXPECT_EQ(texts(), (Texts{"number 0", "number 3 (2 suppressed)", "number 6 (2 suppressed)"}));
    EXPECT_EQ(captured[0].level, LOG_LEVEL_INFO);
    EXPECT_EQ(captured[0].logger, "LogStatements");
}

TEST_F(LogStatements, EveryNOfOneOrLessLogsEachTime) {
    for (const long long n : {1LL, 0LL, -3LL, std::numeric_limits<long long>::min()}) {
        ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, n) << n;
    }
    EXPECT_EQ(texts(), (Texts{"1", "0", "-3", "-9223372036854775808"}));
}

TEST_F(LogStatements, FirstNLogsTheFirstN) {
    for (int i = 0; i < 5; ++i) {
        ZOL_LOG_FIRST_N(log, LOG_LEVEL_INFO, 2) << i;
        ZOL_LOG_FIRST_N(log, LOG_LEVEL_INFO, 0) << "none";
        ZOL_LOG_FIRST_N(log, LOG_LEVEL_INFO, -1) << "none";
    }
    EXPECT_EQ(texts(), (Texts{"0", "1"}));
}

TEST_F(LogStatements, OnceLogsOnce) {
    for (int i = 0; i < 3; ++i) {
        ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << i;
    }
    EXPECT_EQ(texts(), (Texts{"0"}));
}

TEST_F(LogStatements, EveryIntervalLogsTheFirstAndReportsTheSuppressedOnesAfterTheInterval) {
    std::chrono::hours interval(1);
    for (int i = 0; i < 5; ++i) {
        if (i == 3) {
            interval = 0h; // like an hour later
        }
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, interval) << i;
    }
    EXPECT_EQ(texts(), (Texts{"0", "3 (2 suppressed)", "4"}));
}

TEST_F(LogStatements, EveryIntervalUsesAClockThatRuns) {
    const auto end = std::chrono::steady_clock::now() + 10s;
    while (texts().size() < 3 && std::chrono::steady_clock::now() < end) {
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, 2ms) << "tick";
    }
    EXPECT_EQ(texts().size(), 3U);
    EXPECT_GT(suppressed(), 0);
}

TEST_F(LogStatements, EveryIntervalAcceptsAllUnits) {
    for (int i = 0; i < 2; ++i) {
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, std::chrono::hours::max()) << "hours";
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, std::chrono::nanoseconds::max()) << "nanoseconds";
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, std::chrono::duration<double>(1e30)) << "seconds";
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, std::chrono::duration<int, std::ratio<86400>>(200 * 365))
            << "days";
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, -1ns) << "negative";
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, std::chrono::hours::min()) << "most negative";
    }
    EXPECT_EQ(texts(), (Texts{"hours", "nanoseconds", "seconds", "days", "negative",
                              "most negative", "negative", "most negative"}));
}

TEST_F(LogStatements, IfLogsIfTheConditionHolds) {
    const std::vector<int> numbers = {1, 2, 3};
    for (const int number : numbers) {
        ZOL_LOG_IF(log, LOG_LEVEL_INFO, number == 2) << number;
        ZOL_LOG_IF(log, LOG_LEVEL_INFO, std::function<void()>()) << "converts to false";
        ZOL_LOG_IF(log, LOG_LEVEL_INFO, std::is_same_v<int, long>) << "with a comma";
    }
    EXPECT_EQ(texts(), (Texts{"2"}));
}

TEST_F(LogStatements, HereNamesFileAndLine) {
    ZOL_LOG_HERE(log, LOG_LEVEL_INFO) << "text " << 1;
    const std::string position = "LogStatementsTest.cpp:" + std::to_string(__LINE__ - 1);
    EXPECT_EQ(texts(), (Texts{position + ": text 1"}));
}

// What a statement evaluates.

TEST_F(LogStatements, ASuppressedExecutionEvaluatesNothingOfTheLine) {
    int lines = 0;
    for (int i = 0; i < 10; ++i) {
        ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, 10) << ++lines;
        ZOL_LOG_FIRST_N(log, LOG_LEVEL_INFO, 1) << ++lines;
        ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << ++lines;
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, 1h) << ++lines;
        ZOL_LOG_IF(log, LOG_LEVEL_INFO, i == 0) << ++lines;
    }
    EXPECT_EQ(lines, 5);
}

TEST_F(LogStatements, AUsedUpStatementEvaluatesNothingAtAll) {
    int loggers = 0;
    int levels = 0;
    int numbers = 0;
    for (int i = 0; i < 10; ++i) {
        ZOL_LOG_FIRST_N((++loggers, log), (++levels, LOG_LEVEL_INFO), (++numbers, 2)) << i;
        ZOL_LOG_ONCE((++loggers, log), (++levels, LOG_LEVEL_INFO)) << i;
    }
    EXPECT_EQ(loggers, 3);
    EXPECT_EQ(levels, 3);
    EXPECT_EQ(numbers, 2);
}

TEST_F(LogStatements, AnInactiveLevelEvaluatesNoLastArgumentAndDoesNotCount) {
    int evaluated = 0;
    for (int i = 0; i < 4; ++i) {
        log->minLogLevel(i < 2 ? LOG_LEVEL_WARNING : LOG_LEVEL_INFO);
        ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, (++evaluated, 2)) << "every n " << i;
        ZOL_LOG_FIRST_N(log, LOG_LEVEL_INFO, (++evaluated, 2)) << "first n " << i;
        ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << "once " << i;
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, (++evaluated, 1h)) << "every " << i;
        ZOL_LOG_IF(log, LOG_LEVEL_INFO, (++evaluated, true)) << "if " << i;
        ZOL_LOG_HERE(log, LOG_LEVEL_INFO) << (++evaluated, "");
        if (i == 1) {
            EXPECT_EQ(evaluated, 0);
            EXPECT_TRUE(captured.empty());
        }
    }
    const Texts logged = texts();
    EXPECT_EQ(logged[0], "every n 2");
    EXPECT_EQ(logged[1], "first n 2");
    EXPECT_EQ(logged[2], "once 2");
    EXPECT_EQ(logged[3], "every 2");
    EXPECT_EQ(logged[4], "if 2");
}

TEST_F(LogStatements, EachArgumentIsEvaluatedOnce) {
    int loggers = 0;
    int levels = 0;
    int others = 0;
    ZOL_LOG_EVERY_N((++loggers, log), (++levels, LOG_LEVEL_INFO), (++others, 2)) << "";
    ZOL_LOG_FIRST_N((++loggers, log), (++levels, LOG_LEVEL_INFO), (++others, 2)) << "";
    ZOL_LOG_ONCE((++loggers, log), (++levels, LOG_LEVEL_INFO)) << "";
    ZOL_LOG_EVERY((++loggers, log), (++levels, LOG_LEVEL_INFO), (++others, 1h)) << "";
    ZOL_LOG_IF((++loggers, log), (++levels, LOG_LEVEL_INFO), (++others, true)) << "";
    ZOL_LOG_HERE((++loggers, log), (++levels, LOG_LEVEL_INFO)) << "";
    EXPECT_EQ(loggers, 6);
    EXPECT_EQ(levels, 6);
    EXPECT_EQ(others, 4);
    EXPECT_EQ(captured.size(), 6U);
}

// Where a statement may stand.

TEST_F(LogStatements, EachStatementCountsForItself) {
    for (int i = 0; i < 2; ++i) {
        ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << "one";
        // clang-format off
        ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << "two"; ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << "same line";
        // clang-format on
    }
    EXPECT_EQ(texts(), (Texts{"one", "two", "same line"}));
}

TEST_F(LogStatements, LinesMayContainOtherStatements) {
    for (int i = 0; i < 2; ++i) {
        // clang-format off
        ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, 1) << "outer " << [&] { ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, 2) << "inner " << i; return i; }();
        // clang-format on
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, 0s) << "timed " << [&] {
            ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, 1h) << "timed inside " << [&] {
                ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << "innermost";
                return i;
            }();
            return i;
        }();
    }
    EXPECT_EQ(texts(), (Texts{"inner 0", "outer 0", "innermost", "timed inside 0", "timed 0",
                              "outer 1", "timed 1"}));
}

TEST_F(LogStatements, AreStatementsLikeOthers) {
    for (int i = 0; i < 4; ++i) {
        // NOLINTBEGIN(readability-braces-around-statements)
        if (i == 0)
            ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, 2) << "every n";
        else if (i == 1)
            ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << "once";
        else if (i == 2)
            ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, 1h) << "every";
        else
            ZOL_LOG_IF(log, LOG_LEVEL_INFO, i == 3) << "if";
        // NOLINTEND(readability-braces-around-statements)
    }
    EXPECT_EQ(texts(), (Texts{"every n", "once", "every", "if"}));
}

TEST_F(LogStatements, AnInlineFunctionHasOneCountForAllItsTranslationUnits) {
    logOnceInline(log);
    logOnceInlineElsewhere(log);
    EXPECT_EQ(texts(), (Texts{"inline"}));
}

TEST_F(LogStatements, EachInstanceOfATemplateCountsForItself) {
    for (int i = 0; i < 2; ++i) {
        logOnceFor<int>(log);
        logOnceFor<char>(log);
    }
    EXPECT_EQ(texts(), (Texts{"template 4", "template 1"}));
}

// The number of suppressed executions.

TEST_F(LogStatements, TheNumberIsWrittenWithoutTheFlagsOfTheLine) {
    for (int i = 0; i <= 12; ++i) {
        ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, 12) << std::hex << std::showbase << i << std::setw(40);
    }
    EXPECT_EQ(texts(), (Texts{"0", "0xc (11 suppressed)"}));
}

TEST_F(LogStatements, ALongLineKeepsTheNumber) {
    const std::string text(1000, 'x');
    for (int i = 0; i < 3; ++i) {
        ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, 2) << text;
    }
    EXPECT_EQ(texts(), (Texts{text, text + " (1 suppressed)"}));
}

TEST_F(LogStatements, ALineWhoseTextThrowsKeepsTheNumber) {
    for (int i = 0; i < 3; ++i) {
        try {
            ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, 2)
                << "half " << (i == 2 ? throw std::runtime_error("rest") : i);
        } catch (const std::runtime_error&) {
        }
    }
    EXPECT_EQ(texts(), (Texts{"half 0", "half  (1 suppressed)"}));
}

// Counts of several threads.

template <int n>
void logEveryNth(Logger* log) {
    ZOL_LOG_EVERY_N(log, LOG_LEVEL_INFO, n) << "line";
}

template <int n>
void logFirst(Logger* log) {
    ZOL_LOG_FIRST_N(log, LOG_LEVEL_INFO, n) << "line";
}

constexpr int timesPerThread = 2001; // one more than what the steps below divide
constexpr int executions = threads * timesPerThread;

class LogStatementsOnThreads : public LogStatements {
protected:
    void execute(void (*statement)(Logger*)) {
        onThreads([this, statement] {
            for (int i = 0; i < timesPerThread; ++i) {
                statement(log);
            }
        });
    }

    template <int n>
    void expectEachNth() {
        captured.clear();
        execute(logEveryNth<n>);
        constexpr int lines = (executions + n - 1) / n;
        EXPECT_EQ(texts().size(), static_cast<std::size_t>(lines)) << "n is " << n;
        EXPECT_EQ(suppressed(), (lines - 1LL) * (n - 1)) << "n is " << n;
    }
};

TEST_F(LogStatementsOnThreads, EveryNLogsExactlyEachNth) {
    expectEachNth<1>();
    expectEachNth<2>();
    expectEachNth<10>();
    expectEachNth<100>();
    expectEachNth<1000>();
    expectEachNth<executions - 1>();
    expectEachNth<executions>();
}

TEST_F(LogStatementsOnThreads, FirstNLogsExactlyN) {
    execute(logFirst<1>);
    EXPECT_EQ(texts().size(), 1U);
    execute(logFirst<5000>);
    EXPECT_EQ(texts().size(), 1U + 5000U);
    execute(logFirst<executions>);
    EXPECT_EQ(texts().size(), 1U + 5000U + executions);
}

TEST_F(LogStatementsOnThreads, OnceLogsOnce) {
    onThreads([this] { ZOL_LOG_ONCE(log, LOG_LEVEL_INFO) << "line"; });
    EXPECT_EQ(texts(), (Texts{"line"}));
}

TEST_F(LogStatementsOnThreads, EveryIntervalReportsEachSuppressedExecution) {
    const auto statement = [this](std::chrono::nanoseconds interval) {
        ZOL_LOG_EVERY(log, LOG_LEVEL_INFO, interval) << "line";
    };
    onThreads([&] {
        for (int i = 0; i < timesPerThread; ++i) {
            statement(20us);
        }
    });
    statement(0ns);
    EXPECT_EQ(static_cast<long long>(texts().size()) + suppressed(), executions + 1);
}

} // namespace
