#include <algorithm>
#include <sstream>
#include <string>
#include <string_view>

#include <gtest/gtest.h>

#include "DoLog.h"
#include "FreshProcess.h"
#include "Property.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

/// Console, on a standard error that is a file.
class Console : public testing::Test {
protected:
    void SetUp() override {
        testing::internal::CaptureStderr();
        backend = Logger::installBackend("Console");
    }

    void TearDown() override { Logger::uninstallBackend(backend); }

    /// What stands on standard error so far: each line checked for its time stamp and stripped of
    /// it, with "\n" for the platform's line end.
    static std::string written() {
        std::istringstream text(testing::internal::GetCapturedStderr());
        std::string result;
        for (std::string line; std::getline(text, line);) {
            if (!line.empty() && line.back() == '\r') {
                line.pop_back();
            }
            EXPECT_TRUE(beginsWithTimeStamp(line)) << line;
            result += line.substr(std::min(timeStamp.size(), line.size())) + "\n";
        }
        return result;
    }

    static void logAt(int level, const char* text) {
        support::doLog(Logger::getLogger("orders"), static_cast<LoggingLevel>(level), text);
    }

    LoggerBackend* backend = nullptr;

private:
    static constexpr std::string_view timeStamp = "0000-00-00 00:00:00.000 ";

    static bool beginsWithTimeStamp(const std::string& line) {
        return line.size() >= timeStamp.size() &&
               std::equal(timeStamp.begin(), timeStamp.end(), line.begin(), [](char shape, char c) {
                   return shape == '0' ? c >= '0' && c <= '9' : c == shape;
               });
    }
};

TEST_F(Console, IsLoadedByItsName) {
    testing::internal::GetCapturedStderr();
    EXPECT_NE(backend, nullptr);
    EXPECT_THROW(Logger::installBackend(backend), LoggerBackendLoadError) << "it is installed";
}

TEST_F(Console, WritesTimeStampLevelNameLoggerNameAndMessageOnOneLine) {
    Logger::getLogger("orders")->warning("stock is low: ") << 3;
    EXPECT_EQ(written(), "WARNING [orders] stock is low: 3\n");
}

TEST_F(Console, NamesTheLevels) {
    for (const int level : {10, 20, 30, 40, 50, 60}) {
        logAt(level, "x");
    }
    EXPECT_EQ(written(), "TRACE [orders] x\nDEBUG [orders] x\nINFO [orders] x\n"
                         "WARNING [orders] x\nERROR [orders] x\nFATAL [orders] x\n");
}

TEST_F(Console, ShowsLevelsBetweenTheNamedOnesByTheirDistance) {
    for (const int level : {35, 99, 5, -1}) {
        logAt(level, "x");
    }
    EXPECT_EQ(written(), "INFO+5 [orders] x\nFATAL+39 [orders] x\n"
                         "TRACE-5 [orders] x\nTRACE-11 [orders] x\n");
}

TEST_F(Console, WritesWhatWasCachedBeforeItCameLevel0Included) {
    Logger::uninstallBackend(backend);
    logAt(0, "without a level");
    logAt(30, "early");
    Logger::installBackend(backend);
    EXPECT_EQ(written(), "NONE [orders] without a level\nINFO [orders] early\n");
}

TEST_F(Console, KeepsAMessageWithLineBreaksOnOneLine) {
    logAt(30, "first\nsecond\r\nthird");
    logAt(30, "ended by a manipulator\n");
    logAt(30, "");
    Logger::getLogger("a\nb")->info("x");
    EXPECT_EQ(written(), "INFO [orders] first\\nsecond\\r\\nthird\n"
                         "INFO [orders] ended by a manipulator\n"
                         "INFO [orders] \n"
                         "INFO [a\\nb] x\n");
}

TEST_F(Console, TakesAMessageAsTextAndNotAsAPattern) {
    logAt(30, "100 % {} %v %n");
    EXPECT_EQ(written(), "INFO [orders] 100 % {} %v %n\n");
}

TEST_F(Console, UsesNoColoursWhereThereIsNoTerminal) {
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
        Logger::getLogger("orders")->info("out");
        std::string text = testing::internal::GetCapturedStderr();
        text.erase(std::remove(text.begin(), text.end(), '\r'), text.end());
        EXPECT_EQ(text, "INFO [orders] out!\n");
    });
}

TEST(ConsoleSettings, ThatMakeNoSenseAreToldInOneLineEach) {
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
