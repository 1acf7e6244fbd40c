// ZOL_CHECK, in programs that it ends.

#include <algorithm>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include "ChildProcess.h"
#include "CrisisLogSandbox.h"

#include "CheckClient.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"

using support::ChildProcess;
using support::CrisisLogSandbox;
using ZOL::Framework::CrisisLogging::CrisisLogger;

namespace {

/// Runs CheckClient and returns its exit code.
int runClient(const std::string& how) {
    return ChildProcess({ChildProcess::program("CheckClient"), how, CrisisLogSandbox::scratch()})
        .wait();
}

std::string standardError() {
    return contentOf(CrisisLogSandbox::scratch() + "/error");
}
std::string log() {
    return contentOf(CrisisLogSandbox::scratch() + "/log");
}

/// The lines of the crisis log without their times.
std::string crisisLog() {
    std::ifstream stream(CrisisLogSandbox::path);
    std::string lines;
    for (std::string line; std::getline(stream, line);) {
        lines += line.substr(line.find(" - ") + 3) + "\n";
    }
    return lines;
}

constexpr const char* message = "CheckClient.cpp:: check failed: pieces >= 0: -3 left\n";

CRISIS_LOG_TEST(Check, WritesToStandardErrorCrisisLogAndLoggerAndAborts) {
    EXPECT_EQ(runClient("fail"), checkAborted);
    EXPECT_EQ(withoutLineNumber(standardError()), message);
    EXPECT_EQ(withoutLineNumber(crisisLog()), message);
    EXPECT_EQ(withoutLineNumber(log()), std::string("60 zol.check ") + message);
    EXPECT_NE(standardError().find("CheckClient.cpp:" + std::to_string(checkLine) + ": "),
              std::string::npos)
        << standardError();
}

CRISIS_LOG_TEST(Check, WritesTheLineThatTheDocumentShows) {
    const auto withoutPosition = [](const std::string& line) {
        return line.substr(line.find(": check failed"));
    };
    EXPECT_EQ(runClient("document"), checkAborted);
    EXPECT_EQ(withoutPosition(standardError()), withoutPosition(contentOf(CHECK_FILE)));
}

CRISIS_LOG_TEST(Check, EndsTheProcessLikeAbort) {
#if defined(_WIN32)
    constexpr int aborted = 3;
#else
    constexpr int aborted = 128 + 6; // SIGABRT
#endif
    EXPECT_EQ(runClient("without-handler"), aborted);
}

CRISIS_LOG_TEST(Check, ShowsTheConditionAsItIsWritten) {
    EXPECT_EQ(runClient("without-text"), checkAborted);
    EXPECT_EQ(withoutLineNumber(standardError()),
              "CheckClient.cpp:: check failed: std::is_same_v<int, long>\n");
    EXPECT_EQ(withoutLineNumber(crisisLog()),
              "CheckClient.cpp:: check failed: std::is_same_v<int, long>\n");
}

CRISIS_LOG_TEST(Check, EvaluatesTheConditionOnceAndNoTextIfItHolds) {
    EXPECT_EQ(runClient("hold"), 0);
    EXPECT_EQ(standardError(), "");
    EXPECT_EQ(log(), "");
    EXPECT_TRUE(CrisisLogSandbox::isFree());
}

CRISIS_LOG_TEST(Check, LogsAndAbortsIfTheCrisisLogIsRefused) {
    CrisisLogger::instance();
    EXPECT_EQ(runClient("fail"), checkAborted);
    EXPECT_EQ(withoutLineNumber(standardError()), message);
    EXPECT_EQ(withoutLineNumber(log()), std::string("60 zol.check ") + message);
}

CRISIS_LOG_TEST(Check, AbortsIfAChannelThrows) {
    EXPECT_EQ(runClient("channel-throws"), checkAborted);
    EXPECT_EQ(withoutLineNumber(standardError()), message) << "once";
    EXPECT_EQ(withoutLineNumber(crisisLog()), message);
}

CRISIS_LOG_TEST(Check, AbortsIfAChannelFailsACheckToo) {
    EXPECT_EQ(runClient("nested"), checkAborted);
    const std::string error = standardError();
    EXPECT_EQ(std::count(error.begin(), error.end(), '\n'), 2) << error;
    EXPECT_EQ(withoutLineNumber(log()), std::string("60 zol.check ") + message);
}

CRISIS_LOG_TEST(Check, AbortsWithTheRestOfTheTextIfTheTextThrows) {
    EXPECT_EQ(runClient("text-throws"), checkAborted);
    EXPECT_EQ(withoutLineNumber(standardError()),
              "CheckClient.cpp:: check failed: pieces >= 0: half a text\n");
}

CRISIS_LOG_TEST(Check, AbortsIfNothingCatchesWhatTheTextThrows) {
    EXPECT_EQ(runClient("uncaught"), checkAborted);
}

CRISIS_LOG_TEST(Check, AbortsAtTheEndOfAFunctionThatReturnsNothing) {
    EXPECT_EQ(runClient("end-of-function"), checkAborted);
}

CRISIS_LOG_TEST(Check, AbortsDuringStackUnwinding) {
    EXPECT_EQ(runClient("unwinding"), checkAborted);
    EXPECT_EQ(withoutLineNumber(log()), std::string("60 zol.check ") + message);
}

CRISIS_LOG_TEST(Check, AbortsIfLoggingDoesNotEnd) {
    EXPECT_EQ(runClient("hang"), checkAborted);
    EXPECT_EQ(withoutLineNumber(standardError()), message);
    EXPECT_EQ(withoutLineNumber(crisisLog()), message);
    EXPECT_EQ(log().find("check"), std::string::npos);
}

CRISIS_LOG_TEST(Check, AbortsIfSeveralThreadsFail) {
    EXPECT_EQ(runClient("threads"), checkAborted);
    EXPECT_EQ(withoutLineNumber(standardError()).find(message), 0U);
    EXPECT_EQ(withoutLineNumber(crisisLog()).find(message), 0U);
}

} // namespace
