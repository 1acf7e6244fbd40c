#include <algorithm>
#include <sstream>
#include <string>

#include <gtest/gtest.h>

#include "DoLog.h"
#include "FreshProcess.h"
#include "Property.h"
#include "TextShape.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Framework/GenericLogger/LoggingChannel.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

/// The Console back end, with standard error redirected to a file.
class ConsoleTest : public testing::Test {
protected:
    void SetUp() override {
        testing::internal::CaptureStderr();
        backend = Logger::installBackend("Console");
    }

    void TearDown() override { Logger::uninstallBackend(backend); }

    /// The lines on standard error so far, with "\n" as line end and without their time stamps,
    /// which are checked.
    static std::string written() {
        std::istringstream text(testing::internal::GetCapturedStderr());
        std::string result;
        for (std::string line; std::getline(text, line);) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            const std::size_t end = std::min(timeStampShape.size() + 1, line.size());
            EXPECT_TRUE(hasShape(line.substr(0, end), std::string(timeStampShape) + " ")) << line;
            result += line.substr(end) + "\n";
        }
        return result;
    }

    static void logAt(int level, const char* text) {
        support::doLog(Logger::getLogger("orders"), static_cast<LoggingLevel>(level), text);
    }

    LoggerBackend* backend = nullptr;
};

TEST_F(ConsoleTest, IsLoadedByItsName) {
    testing::internal::GetCapturedStderr();
    EXPECT_NE(backend, nullptr);
    EXPECT_THROW(Logger::installBackend(backend), LoggerBackendLoadError)
        << "it is already installed";
}

TEST_F(ConsoleTest, WritesTimeStampLevelNameLoggerNameAndMessageOnOneLine) {
    Logger::getLogger("orders")->warning("stock is low: ") << 3;
    EXPECT_EQ(written(), "WARNING [orders] stock is low: 3\n");
}

TEST_F(ConsoleTest, ReturnsTheChannelOfALoggerToACallByHand) {
    Logger::getLogger("orders")->info("x");
    LoggingChannel* const channel = backend->createChannel("orders");
    EXPECT_EQ(backend->createChannel("orders"), channel);
    EXPECT_NE(backend->createChannel("stock"), channel);
    channel->log(LOG_LEVEL_ERROR, "by hand");
    channel->release();
    Logger::getLogger("orders")->info("y");
    EXPECT_EQ(written(), "INFO [orders] x\nERROR [orders] by hand\nINFO [orders] y\n");
}

TEST_F(ConsoleTest, NamesTheLevels) {
    for (const int level : {10, 20, 30, 40, 50, 60}) {
        logAt(level, "x");
    }
    EXPECT_EQ(written(), "TRACE [orders] x\nDEBUG [orders] x\nINFO [orders] x\n"
                         "WARNING [orders] x\nERROR [orders] x\nFATAL [orders] x\n");
}

TEST_F(ConsoleTest, NamesOtherLevelsByTheirDifferenceFromANamedOne) {
    for (const int level : {35, 99, 5, -1}) {
        logAt(level, "x");
    }
    EXPECT_EQ(written(), "INFO+5 [orders] x\nFATAL+39 [orders] x\n"
                         "TRACE-5 [orders] x\nTRACE-11 [orders] x\n");
}

TEST_F(ConsoleTest, WritesCachedMessagesIncludingLevel0) {
    Logger::uninstallBackend(backend);
    logAt(0, "without a level");
    logAt(30, "early");
    Logger::installBackend(backend);
    EXPECT_EQ(written(), "NONE [orders] without a level\nINFO [orders] early\n");
}

TEST_F(ConsoleTest, KeepsAMessageWithLineBreaksOnOneLine) {
    logAt(30, "first\nsecond\r\nthird");
    logAt(30, "ended by a manipulator\n");
    logAt(30, "");
    Logger::getLogger("a\nb")->info("x");
    EXPECT_EQ(written(), "INFO [orders] first\\nsecond\\r\\nthird\n"
                         "INFO [orders] ended by a manipulator\n"
                         "INFO [orders] \n"
                         "INFO [a\\nb] x\n");
}

TEST_F(ConsoleTest, DoesNotInterpretAMessageAsAPattern) {
    logAt(30, "100 % {} %v %n");
    EXPECT_EQ(written(), "INFO [orders] 100 % {} %v %n\n");
}

TEST_F(ConsoleTest, WritesNoColoursToAFile) {
    logAt(60, "fatal");
    EXPECT_EQ(written(), "FATAL [orders] fatal\n");
}

TEST(ConsoleSettings, ChangeColourPatternAndLevels) {
    support::inFreshProcess([] {
        setProperty("Console.pattern", "%^%v%$!");
        setProperty("Console.levels", "=ERROR;orders=INFO");
        setProperty("Console.colour", "Never");
        testing::internal::CaptureStderr();
        Logger::installBackend("Console");
        Logger::getLogger("stock")->info("dropped");
        Logger::getLogger("orders")->debug("dropped");
        Logger::getLogger("orders")->info("written");
        std::string text = testing::internal::GetCapturedStderr();
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        EXPECT_EQ(text, "INFO [orders] written!\n");
    });
}

TEST(ConsoleSettings, HaveARuleForALoggerNameWithALineBreak) {
    support::inFreshProcess([] {
        setProperty("Console.pattern", "%v");
        setProperty("Console.levels", "two\nlines=ERROR");
        testing::internal::CaptureStderr();
        Logger::installBackend("Console");
        Logger::getLogger("two\nlines")->info("dropped by the filter");
        Logger::getLogger("two\nlines")->error("written");
        Logger::getLogger("two")->info("written");
        std::string text = testing::internal::GetCapturedStderr();
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        EXPECT_EQ(text, "ERROR [two\\nlines] written\nINFO [two] written\n");
    });
}

TEST(ConsoleSettings, AreReportedInOneLineEachIfInvalid) {
    support::inFreshProcess([] {
        setProperty("Console.levels", "orders:INFO");
        setProperty("Console.colour", "pink");
        testing::internal::CaptureStderr();
        EXPECT_NE(Logger::installBackend("Console"), nullptr);
        const std::string text = testing::internal::GetCapturedStderr();
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 2) << text;
        EXPECT_NE(text.find("Console.levels is \"orders:INFO\""), std::string::npos) << text;
        EXPECT_NE(text.find("Console.colour is \"pink\""), std::string::npos) << text;
    });
}

} // namespace
