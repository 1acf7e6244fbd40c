// How the one crisis logger of a process is created, refused and destroyed.

#include <atomic>
#include <chrono>
#include <filesystem>
#include <set>
#include <string>
#include <thread>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "CrisisClients.h"
#include "CrisisLogHooks.h"
#include "CrisisLogSandbox.h"
#include "OpenHandles.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::ChildProcess;
using support::CrisisLogSandbox;
using support::openHandles;
using ZOL::Framework::CrisisLogging::CrisisLogger;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Gadgets::DLL::DLLHolder;
namespace CrisisLogHooks = support::CrisisLogHooks;
using CrisisLogHooks::Kind;

namespace {

const std::string refusal = std::string("Error opening log file: '") + CrisisLogSandbox::path + "'";

/// The message of the FrameworkException that a refused crisis log throws.
std::string refusalOfInstance() {
    try {
        CrisisLogger::instance();
    } catch (const FrameworkException& exception) {
        EXPECT_EQ(typeid(exception), typeid(FrameworkException));
        return exception.message();
    }
    return "nothing was thrown";
}

void makePathUnusable() {
    std::filesystem::create_directory(CrisisLogSandbox::path);
}

void makePathUsable() {
    std::filesystem::remove(CrisisLogSandbox::path);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, MakesTheFileIfItIsMissing) {
    ASSERT_FALSE(std::filesystem::exists(CrisisLogSandbox::path));
    CrisisLogger::instance();
    EXPECT_TRUE(std::filesystem::is_regular_file(CrisisLogSandbox::path));
    EXPECT_EQ(std::filesystem::file_size(CrisisLogSandbox::path), 0U);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, DoesNotHappenByItself) {
    EXPECT_FALSE(std::filesystem::exists(CrisisLogSandbox::path));
    EXPECT_TRUE(CrisisLogSandbox::isFree());
}

CRISIS_LOG_TEST(CrisisLoggerCreation, HappensOnceAndEveryCallGivesTheSameObject) {
    CrisisLogHooks::attach();
    int openings = 0;
    CrisisLogHooks::observe(
        [&](const CrisisLogHooks::Call& call) { openings += call.kind == Kind::Open ? 1 : 0; });
    CrisisLogger* const first = &CrisisLogger::instance();
    EXPECT_EQ(&CrisisLogger::instance(), first);
    CrisisLogger::instance().log("used");
    EXPECT_EQ(&CrisisLogger::instance(), first);
    EXPECT_EQ(openings, 1);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, WorksBeforeMain) {
    ASSERT_EQ(ChildProcess({ChildProcess::program("EarlyCrisisClient")}).wait(), 0);
    const std::string content = CrisisLogHooks::content();
    const std::string lineEnd = CrisisLogSandbox::lineEnd;
    EXPECT_NE(content.find(" - before main" + lineEnd), std::string::npos);
    EXPECT_NE(content.find(" - in main" + lineEnd), std::string::npos);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, ThrowsFrameworkExceptionThatNamesTheFileIfThePathIsUnusable) {
    makePathUnusable();
    EXPECT_EQ(refusalOfInstance(), refusal);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, ThrowsTheSameIfAnotherProcessHasTheFile) {
    const StayingClient holder("hold");
    EXPECT_EQ(refusalOfInstance(), refusal);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, ThrowsTheSameIfNoStreamCanBeOpened) {
    CrisisLogHooks::attach();
    CrisisLogHooks::fail(Kind::Open, true);
    EXPECT_EQ(refusalOfInstance(), refusal);
    EXPECT_TRUE(CrisisLogSandbox::isFree()) << "what was opened is closed again";
    CrisisLogHooks::fail(Kind::Open, false);
    EXPECT_EQ(logInAnotherProcess("not in the way"), gotTheLog);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, IsTriedAgainUntilThePathIsUsable) {
    CrisisLogHooks::attach();
    makePathUnusable();
    EXPECT_EQ(refusalOfInstance(), refusal);
    EXPECT_EQ(refusalOfInstance(), refusal);
    makePathUsable();
    CrisisLogger* const logger = &CrisisLogger::instance();
    logger->log("at last");
    EXPECT_EQ(&CrisisLogger::instance(), logger);
    EXPECT_NE(CrisisLogHooks::content().find(" - at last"), std::string::npos);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, IsTriedAgainUntilTheOtherProcessHasEnded) {
    StayingClient holder("hold");
    EXPECT_EQ(refusalOfInstance(), refusal);
    EXPECT_EQ(refusalOfInstance(), refusal);
    ASSERT_EQ(holder.end(), gotTheLog);
    CrisisLogger::instance().log("at last");
    EXPECT_EQ(logInAnotherProcess("too late"), wasRefused);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, LeavesItsLockFreeWhenItFails) {
    makePathUnusable();
    EXPECT_EQ(refusalOfInstance(), refusal);
    std::string message;
    std::thread([&] { message = refusalOfInstance(); }).join();
    EXPECT_EQ(message, refusal);
    makePathUsable();
    CrisisLogger* fromThread = nullptr;
    std::thread([&] { fromThread = &CrisisLogger::instance(); }).join();
    EXPECT_EQ(fromThread, &CrisisLogger::instance());
}

CRISIS_LOG_TEST(CrisisLoggerCreation, LeavesNothingOpenWhenItFails) {
    StayingClient holder("hold");
    EXPECT_EQ(refusalOfInstance(), refusal);
    const std::size_t before = openHandles();
    for (int i = 0; i < 100; ++i) {
        EXPECT_EQ(refusalOfInstance(), refusal);
    }
    EXPECT_EQ(openHandles(), before);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, GivesEightThreadsThatRaceForItOneObject) {
    CrisisLogHooks::attach();
    constexpr std::size_t threadCount = 8;
    std::atomic<int> openings = 0;
    std::atomic<std::size_t> there = 0;
    CrisisLogHooks::observe([&](const CrisisLogHooks::Call& call) {
        if (call.kind == Kind::Open) {
            ++openings;
            // Time for the others to reach the lock, or to pass it if there were none.
            std::this_thread::sleep_for(std::chrono::milliseconds(50));
        }
    });
    std::vector<CrisisLogger*> seen(threadCount);
    std::vector<std::thread> threads;
    for (std::size_t thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&, thread] {
            ++there;
            while (there < threadCount) {
                std::this_thread::yield();
            }
            seen[thread] = &CrisisLogger::instance();
            seen[thread]->log("usable at once");
        });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(std::set<CrisisLogger*>(seen.begin(), seen.end()),
              std::set<CrisisLogger*>{&CrisisLogger::instance()});
    EXPECT_EQ(openings, 1);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, NeverRunsTwiceAtOnceEvenIfItFails) {
    CrisisLogHooks::attach();
    std::atomic<int> inside = 0;
    std::atomic<int> collisions = 0;
    std::atomic<int> refusals = 0;
    CrisisLogHooks::observe([&](const CrisisLogHooks::Call&) {
        collisions += inside.fetch_add(1) == 0 ? 0 : 1;
        std::this_thread::sleep_for(std::chrono::milliseconds(5));
        --inside;
    });
    CrisisLogHooks::fail(Kind::Open, true);
    std::vector<std::thread> threads;
    constexpr int threadCount = 8;
    threads.reserve(threadCount);
    for (int thread = 0; thread < threadCount; ++thread) {
        threads.emplace_back([&] { refusals += refusalOfInstance() == refusal ? 1 : 0; });
    }
    for (std::thread& thread : threads) {
        thread.join();
    }
    EXPECT_EQ(refusals, threadCount);
    EXPECT_EQ(collisions, 0);
    CrisisLogHooks::observe(nullptr);
}

CRISIS_LOG_TEST(CrisisLoggerCreation, IsTheSameForTheHostAndTwoModulesBuiltApart) {
    CrisisLogHooks::attach();
    const DLLHolder moduleA("CrisisModuleA", "");
    const DLLHolder moduleB("CrisisModuleB", "");
    CrisisLogger* const fromA = moduleA.resolve<CrisisLogger*()>("crisisLogger")();
    EXPECT_EQ(moduleB.resolve<CrisisLogger*()>("crisisLogger")(), fromA);
    EXPECT_EQ(&CrisisLogger::instance(), fromA);

    moduleA.resolve<void(const char*)>("logCrisis")("from A");
    moduleB.resolve<void(const char*)>("logCrisis")("from B");
    CrisisLogger::instance().log("from the host");
    const std::string lineEnd = CrisisLogSandbox::lineEnd;
    EXPECT_EQ(logInAnotherProcess("from nobody"), wasRefused);
    const std::string content = CrisisLogHooks::content();
    const std::size_t a = content.find(" - from A" + lineEnd);
    const std::size_t b = content.find(" - from B" + lineEnd);
    const std::size_t host = content.find(" - from the host" + lineEnd);
    EXPECT_LT(a, b);
    EXPECT_LT(b, host);
    EXPECT_NE(host, std::string::npos);
}

// The framework never destroys the crisis logger. A process may do so at its end.

CRISIS_LOG_TEST(CrisisLoggerDestruction, ClosesTheFileOnceAndLetsTheNextOpenerIn) {
    CrisisLogHooks::attach();
    CrisisLogger& logger = CrisisLogger::instance();
    logger.log("before the end");
    EXPECT_FALSE(CrisisLogSandbox::isFree());
    std::vector<Kind> calls;
    CrisisLogHooks::observe([&](const CrisisLogHooks::Call& call) { calls.push_back(call.kind); });

    logger.~CrisisLogger();

    CrisisLogHooks::observe(nullptr);
    EXPECT_EQ(calls, std::vector<Kind>{Kind::Close});
    EXPECT_TRUE(CrisisLogSandbox::isFree());
    EXPECT_EQ(logInAnotherProcess("after the end"), gotTheLog);
    EXPECT_EQ(&CrisisLogger::instance(), &logger) << "the process makes no second one";
}

} // namespace
