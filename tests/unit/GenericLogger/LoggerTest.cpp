#include "ZOL/Framework/GenericLogger/Logger.h"

#include <climits>
#include <string>
#include <type_traits>

#include "CopiedByNew.h"
#include "DoLog.h"
#include "LoggerFixture.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;

namespace {

class LoggerTest : public support::LoggerFixture {};

static_assert(sizeof(Logger) == sizeof(void*), "a logger is one pointer to its private block");
static_assert(!support::canBeCopiedByNew<Logger> && !std::is_copy_assignable_v<Logger>);
static_assert(std::is_same_v<std::underlying_type_t<LoggingLevel>, int>);

TEST(LoggingLevels, HaveTheirValues) {
    EXPECT_EQ(LOG_LEVEL_NONE, 0);
    EXPECT_EQ(LOG_LEVEL_TRACE, 10);
    EXPECT_EQ(LOG_LEVEL_DEBUG, 20);
    EXPECT_EQ(LOG_LEVEL_INFO, 30);
    EXPECT_EQ(LOG_LEVEL_WARNING, 40);
    EXPECT_EQ(LOG_LEVEL_ERROR, 50);
    EXPECT_EQ(LOG_LEVEL_FATAL, 60);
    EXPECT_EQ(LOG_LEVEL_DEFAULT, 50);
    EXPECT_EQ(sizeof(LoggingLevel), sizeof(int));
}

TEST_F(LoggerTest, IsTheSameObjectForTheSameName) {
    EXPECT_EQ(logger("a"), logger("a"));
    EXPECT_NE(logger("a"), nullptr);
}

TEST_F(LoggerTest, KeepsNoReferenceToTheCallersName) {
    std::string name = named("passing by");
    Logger* const first = Logger::getLogger(name.c_str());
    name.assign(name.size(), 'x');
    EXPECT_EQ(first, logger("passing by"));
}

TEST_F(LoggerTest, NamesThatDifferInCaseAreTwoLoggers) {
    EXPECT_NE(logger("name"), logger("Name"));
}

TEST_F(LoggerTest, ANameAndItsPrefixAreTwoLoggers) {
    EXPECT_NE(logger("name"), logger("name.longer"));
}

TEST_F(LoggerTest, TheEmptyNameIsANameLikeAnyOther) {
    EXPECT_NE(Logger::getLogger(""), nullptr);
    EXPECT_EQ(Logger::getLogger(""), Logger::getLogger(""));
    EXPECT_NE(Logger::getLogger(""), logger("other"));
}

TEST_F(LoggerTest, ANewLoggerIsActiveFromLevel50On) {
    Logger* const log = logger();
    EXPECT_TRUE(log->isLevelActive(static_cast<LoggingLevel>(51)));
    EXPECT_TRUE(log->isLevelActive(LOG_LEVEL_ERROR));
    EXPECT_FALSE(log->isLevelActive(static_cast<LoggingLevel>(49)));
    EXPECT_FALSE(log->isLevelActive(LOG_LEVEL_WARNING)); // the overflow entry's own level
    EXPECT_FALSE(log->isLevelActive(LOG_LEVEL_NONE));
}

TEST_F(LoggerTest, LevelsCompareAsSignedNumbersAndAnyNumberIsALevel) {
    Logger* const log = logger();
    EXPECT_FALSE(log->isLevelActive(static_cast<LoggingLevel>(-1)));
    EXPECT_TRUE(log->isLevelActive(static_cast<LoggingLevel>(INT_MAX)));

    log->minLogLevel(static_cast<LoggingLevel>(-5));
    EXPECT_TRUE(log->isLevelActive(static_cast<LoggingLevel>(-5)));
    EXPECT_TRUE(log->isLevelActive(LOG_LEVEL_NONE));
    EXPECT_FALSE(log->isLevelActive(static_cast<LoggingLevel>(-6)));
    EXPECT_FALSE(log->isLevelActive(static_cast<LoggingLevel>(INT_MIN)));
}

TEST_F(LoggerTest, TheMinimumLevelBelongsToOneLogger) {
    logger("a")->minLogLevel(LOG_LEVEL_TRACE);
    EXPECT_TRUE(logger("a")->isLevelActive(LOG_LEVEL_TRACE));
    EXPECT_FALSE(logger("b")->isLevelActive(LOG_LEVEL_TRACE));
}

TEST_F(LoggerTest, TheMinimumLevelDoesNotStopAMessagePassedToLog) {
    installBackend("A");
    Logger* const log = logger();
    log->minLogLevel(static_cast<LoggingLevel>(100));

    doLog(log, LOG_LEVEL_TRACE, "below");

    EXPECT_EQ(journal, support::Journal{line("A", 10, "below")});
}

TEST_F(LoggerTest, ALiveMessageReachesEveryChannelWithLevelAndTextUnchanged) {
    installBackend("A");
    installBackend("B");

    doLog(logger(), static_cast<LoggingLevel>(-7), "one");
    doLog(logger(), static_cast<LoggingLevel>(INT_MAX), "");

    EXPECT_EQ(journal, (support::Journal{line("A", -7, "one"), line("B", -7, "one"),
                                         line("A", INT_MAX, ""), line("B", INT_MAX, "")}));
}

TEST_F(LoggerTest, ALiveMessageIsTheCallersOwnPointer) {
    const char text[] = "not copied";
    const char* received = nullptr;
    installBackend("A").beforeLog = [&](const std::string&, LoggingLevel, const char* handed) {
        received = handed;
    };

    doLog(logger(), LOG_LEVEL_ERROR, text);

    EXPECT_EQ(received, text);
}

TEST_F(LoggerTest, AMessageIsDeliveredToTheChannelsOfItsOwnLoggerOnly) {
    installBackend("A");
    logger("other");

    doLog(logger("one"), LOG_LEVEL_INFO, "text");

    EXPECT_EQ(journal, support::Journal{line("A", 30, "text", "one")});
}

TEST_F(LoggerTest, DisabledLoggingDropsMessagesForChannelsAndDoesNotCacheThem) {
    installBackend("A");
    Logger* const log = logger();
    log->enableLogging(false);
    doLog(log, LOG_LEVEL_ERROR, "dropped");
    log->enableLogging(true);
    EXPECT_TRUE(journal.empty());

    installBackend("B"); // would flush a cache
    EXPECT_TRUE(journal.empty());

    doLog(log, LOG_LEVEL_ERROR, "seen");
    EXPECT_EQ(journal, (support::Journal{line("A", 50, "seen"), line("B", 50, "seen")}));
}

TEST_F(LoggerTest, DisabledLoggingStillCachesAndTheFlushIgnoresTheSwitch) {
    Logger* const log = logger();
    log->enableLogging(false);
    doLog(log, LOG_LEVEL_ERROR, "cached");

    installBackend("A");

    EXPECT_EQ(journal, support::Journal{line("A", 50, "cached")});
}

TEST_F(LoggerTest, ALevel0MessageWaitsForTheNextFlushEvenWithChannels) {
    installBackend("A");
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_NONE, "none");
    doLog(log, LOG_LEVEL_INFO, "live");
    EXPECT_EQ(journal, support::Journal{line("A", 30, "live")});

    journal.clear();
    installBackend("B");
    EXPECT_EQ(journal, (support::Journal{line("A", 0, "none"), line("B", 0, "none")}));
}

TEST_F(LoggerTest, ALevel0MessageOfADisabledLoggerIsCachedToo) {
    installBackend("A");
    Logger* const log = logger();
    log->enableLogging(false);
    doLog(log, LOG_LEVEL_NONE, "none");

    installBackend("B");

    EXPECT_EQ(journal, (support::Journal{line("A", 0, "none"), line("B", 0, "none")}));
}

} // namespace
