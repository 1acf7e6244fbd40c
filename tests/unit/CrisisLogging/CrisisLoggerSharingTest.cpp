// While one process has the crisis log, every other open is refused.

#include <fstream>
#include <set>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "CrisisClients.h"
#include "CrisisLogHooks.h"
#include "CrisisLogSandbox.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"

using support::ChildProcess;
using support::CrisisLogSandbox;
using ZOL::Framework::CrisisLogging::CrisisLogger;

namespace {

static_assert(!std::is_copy_constructible_v<CrisisLogger>, "a copy would close the file twice");
static_assert(!std::is_copy_assignable_v<CrisisLogger>);

CRISIS_LOG_TEST(CrisisLogSharing, ASecondProcessIsRefusedWhileTheFirstHasTheFile) {
    CrisisLogger::instance();
    EXPECT_EQ(logInAnotherProcess("refused"), wasRefused);
    EXPECT_EQ(logInAnotherProcess("refused again"), wasRefused);
}

CRISIS_LOG_TEST(CrisisLogSharing, ARefusedProcessLeavesTheFileAlone) {
    support::CrisisLogHooks::attach();
    support::CrisisLogHooks::setTime(9, 5, 7, 12);
    CrisisLogger::instance().log("mine");
    EXPECT_EQ(logInAnotherProcess("not mine"), wasRefused);
    CrisisLogger::instance().log("mine still");
    const std::string lineEnd = CrisisLogSandbox::lineEnd;
    EXPECT_EQ(support::CrisisLogHooks::content(),
              "09:5:7.012 - mine" + lineEnd + "09:5:7.012 - mine still" + lineEnd);
    EXPECT_EQ(logInAnotherProcess("still refused"), wasRefused);
}

CRISIS_LOG_TEST(CrisisLogSharing, AnyOtherOpenerInTheSameProcessIsRefusedAsWell) {
    EXPECT_TRUE(CrisisLogSandbox::isFree());
    CrisisLogger::instance();
    EXPECT_FALSE(CrisisLogSandbox::isFree());
    CrisisLogger::instance().log("used");
    EXPECT_FALSE(CrisisLogSandbox::isFree());
}

CRISIS_LOG_TEST(CrisisLogSharing, TheFileIsFreeAgainWhenItsProcessHasEnded) {
    StayingClient holder("hold");
    EXPECT_FALSE(CrisisLogSandbox::isFree());
    ASSERT_EQ(holder.end(), gotTheLog);
    EXPECT_TRUE(CrisisLogSandbox::isFree());
    EXPECT_EQ(logInAnotherProcess("mine now"), gotTheLog);
}

CRISIS_LOG_TEST(CrisisLogSharing, OfTwoProcessesThatContendExactlyOneGetsTheFile) {
    const std::string folder = CrisisLogSandbox::scratch();
    ChildProcess first({clientProgram(), "contend", folder, "first", "second"});
    ChildProcess second({clientProgram(), "contend", folder, "second", "first"});
    waitForFile(folder + "/first.ready");
    waitForFile(folder + "/second.ready");
    const std::ofstream go(folder + "/go");
    EXPECT_EQ((std::multiset<int>{first.wait(), second.wait()}),
              (std::multiset<int>{gotTheLog, wasRefused}));
}

} // namespace
