// The exact bytes of a line of the crisis log, and how it is written.

#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "CrisisClients.h"
#include "CrisisLogHooks.h"
#include "CrisisLogSandbox.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"

using support::CrisisLogSandbox;
using ZOL::Framework::CrisisLogging::CrisisLogger;
namespace CrisisLogHooks = support::CrisisLogHooks;
using CrisisLogHooks::Kind;

namespace {

const std::string lineEnd = CrisisLogSandbox::lineEnd;

void log(const std::string& message) {
    CrisisLogger::instance().log(message.c_str());
}

void makeFile(const std::string& content) {
    std::ofstream file(CrisisLogSandbox::path, std::ios_base::binary);
    file << content;
}

/// The file's text of one line, logged at five past nine.
std::string lineOf(const std::string& message) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    log(message);
    return CrisisLogHooks::content();
}

CRISIS_LOG_TEST(CrisisLoggerLine, HasTheTimeADashTheMessageAndALineEnd) {
    EXPECT_EQ(lineOf("Started"), "09:5:7.012 - Started" + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, PadsTheHourToTwoDigitsAndTheMillisecondToThreeAndNothingElse) {
    CrisisLogHooks::attach();
    std::string expected;
    const auto logAt = [&](int hour, int minute, int second, int millisecond,
                           const std::string& time) {
        CrisisLogHooks::setTime(hour, minute, second, millisecond);
        log("message");
        expected += time + " - message" + lineEnd;
    };
    logAt(0, 1, 1, 5, "00:1:1.005");
    logAt(23, 59, 59, 999, "23:59:59.999");
    logAt(0, 0, 0, 0, "00:0:0.000");
    logAt(10, 10, 10, 10, "10:10:10.010");
    logAt(12, 0, 30, 100, "12:0:30.100");
    EXPECT_EQ(CrisisLogHooks::content(), expected);
}

CRISIS_LOG_TEST(CrisisLoggerLine, IsThereForAnEmptyMessage) {
    EXPECT_EQ(lineOf(""), "09:5:7.012 - " + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, KeepsLineBreaksOfTheMessageAsLineBreaks) {
    EXPECT_EQ(lineOf("first\nsecond\n\nlast\n"), "09:5:7.012 - first" + lineEnd + "second" +
                                                     lineEnd + lineEnd + "last" + lineEnd +
                                                     lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, TakesTheMessageAsItIs) {
    const std::string message = "100 %s %n \\n \"quoted\"\t\x01\x7f\xe9\xff";
    EXPECT_EQ(lineOf(message), "09:5:7.012 - " + message + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, WritesALongMessageCompletely) {
    const std::string message(100000, 'x');
    EXPECT_EQ(lineOf(message), "09:5:7.012 - " + message + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, FollowsTheEarlierLines) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    log("one");
    log("two");
    CrisisLogHooks::setTime(9, 5, 7, 11); // a clock that was set back changes no order
    log("three");
    EXPECT_EQ(CrisisLogHooks::content(), "09:5:7.012 - one" + lineEnd + "09:5:7.012 - two" +
                                             lineEnd + "09:5:7.011 - three" + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, FollowsTheLinesOfAnEarlierProcess) {
    makeFile("left before" + lineEnd);
    EXPECT_EQ(lineOf("Started"), "left before" + lineEnd + "09:5:7.012 - Started" + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, FollowsAnUnterminatedLine) {
    makeFile("left half-wa");
    EXPECT_EQ(lineOf("Started"), "left half-wa09:5:7.012 - Started" + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, IsInTheFileWhenLogReturns) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    std::string expected;
    for (const std::string message : {"one", "two", "three"}) {
        log(message);
        expected.append("09:5:7.012 - ").append(message).append(lineEnd);
        EXPECT_EQ(CrisisLogHooks::content(), expected);
    }
}

CRISIS_LOG_TEST(CrisisLoggerLine, IsStillThereIfTheProcessCrashesRightAfterIt) {
    ASSERT_EQ(support::ChildProcess({clientProgram(), "crash", "the last words"}).wait(), 0);
    const std::string content = CrisisLogHooks::content();
    const std::string end = " - the last words" + lineEnd;
    ASSERT_GT(content.size(), end.size());
    EXPECT_EQ(content.substr(content.size() - end.size()), end);
}

// One line of a second process, after those of a first.
CRISIS_LOG_TEST(CrisisLoggerLine, IsWrittenByOneProcessAfterTheOther) {
    ASSERT_EQ(logInAnotherProcess("first"), gotTheLog);
    const std::string first = CrisisLogHooks::content();
    EXPECT_EQ(lineOf("second"), first + "09:5:7.012 - second" + lineEnd);
}

/// The calls that a message makes, in order.
std::vector<CrisisLogHooks::Call> callsOf(const std::string& message) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    CrisisLogger& logger = CrisisLogger::instance();
    std::vector<CrisisLogHooks::Call> calls;
    CrisisLogHooks::observe([&](const CrisisLogHooks::Call& call) { calls.push_back(call); });
    logger.log(message.c_str());
    CrisisLogHooks::observe(nullptr);
    return calls;
}

void expectOneWriteAndOneFlush(const std::string& message) {
    const std::vector<CrisisLogHooks::Call> calls = callsOf(message);
    const std::string text = "09:5:7.012 - " + message + "\n";

    ASSERT_EQ(calls.size(), 3U);
    EXPECT_EQ(calls[0].kind, Kind::Clock);
    EXPECT_EQ(calls[1].kind, Kind::Write);
    EXPECT_EQ(calls[1].size, 1U);
    EXPECT_EQ(calls[1].count, text.size());
    EXPECT_EQ(calls[1].text, text);
    EXPECT_EQ(calls[2].kind, Kind::Flush);
}

CRISIS_LOG_TEST(CrisisLoggerLine, IsOneWriteOfTheWholeTextAndOneFlush) {
    expectOneWriteAndOneFlush("Started");
}

CRISIS_LOG_TEST(CrisisLoggerLine, IsOneWriteHoweverLongItIs) {
    expectOneWriteAndOneFlush(std::string(100000, 'x') + "\nand a second line");
}

CRISIS_LOG_TEST(CrisisLoggerLine, IsDroppedSilentlyIfItCannotBeWritten) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    log("before");
    CrisisLogHooks::fail(Kind::Write, true);
    log("lost");
    CrisisLogHooks::fail(Kind::Write, false);
    log("after");
    EXPECT_EQ(CrisisLogHooks::content(),
              "09:5:7.012 - before" + lineEnd + "09:5:7.012 - after" + lineEnd);
}

CRISIS_LOG_TEST(CrisisLoggerLine, IgnoresAFailedFlush) {
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    CrisisLogHooks::fail(Kind::Flush, true);
    log("late");
    EXPECT_EQ(CrisisLogHooks::content(), "");
    CrisisLogHooks::fail(Kind::Flush, false);
    log("after");
    EXPECT_EQ(CrisisLogHooks::content(),
              "09:5:7.012 - late" + lineEnd + "09:5:7.012 - after" + lineEnd);
}

} // namespace
