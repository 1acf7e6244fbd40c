#include <cstring>
#include <string>

#include "DoLog.h"
#include "LoggerFixture.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;
using support::Journal;

namespace {

class LoggerCache : public support::LoggerFixture {
protected:
    void logNumbered(int first, int last) {
        for (int number = first; number <= last; ++number) {
            doLog(logger(), LOG_LEVEL_INFO, ("message " + std::to_string(number)).c_str());
        }
    }

    Journal numbered(int first, int last) const {
        Journal lines;
        for (int number = first; number <= last; ++number) {
            lines.push_back(line("A", 30, "message " + std::to_string(number)));
        }
        return lines;
    }

    std::string overflow() const { return line("A", 40, "LOG Cache overflow..."); }
};

TEST_F(LoggerCache, DeliversWhatWasLoggedBeforeABackendWasThereOldestFirst) {
    logNumbered(1, 3);
    installBackend("A");
    EXPECT_EQ(journal, numbered(1, 3));
}

TEST_F(LoggerCache, Takes101MessagesWithoutOverflow) {
    logNumbered(1, 101);
    installBackend("A");
    EXPECT_EQ(journal, numbered(1, 101));
}

TEST_F(LoggerCache, StoresOverflowEntryInPlaceOfMessage102) {
    logNumbered(1, 102);
    installBackend("A");
    Journal expected = numbered(1, 101);
    expected.push_back(overflow());
    EXPECT_EQ(journal, expected);
}

TEST_F(LoggerCache, DropsEveryMessageAfterTheOverflowEntry) {
    logNumbered(1, 500);
    installBackend("A");
    Journal expected = numbered(1, 101);
    expected.push_back(overflow());
    EXPECT_EQ(journal, expected);
}

TEST_F(LoggerCache, StartsOverAfterAFlush) {
    logNumbered(1, 150);
    support::RecordingBackend& backend = installBackend("A");
    Logger::uninstallBackend(&backend);
    journal.clear();

    logNumbered(1, 150);
    install(backend);

    Journal expected = numbered(1, 101);
    expected.push_back(overflow());
    EXPECT_EQ(journal, expected);
}

TEST_F(LoggerCache, IsNotDeliveredTwice) {
    logNumbered(1, 2);
    installBackend("A");
    installBackend("B");
    EXPECT_EQ(journal, numbered(1, 2));
}

TEST_F(LoggerCache, IsBoundedForEachLogger) {
    logNumbered(1, 102);
    doLog(logger("other"), LOG_LEVEL_INFO, "not full");
    installBackend("A");
    EXPECT_EQ(journal.back(), line("A", 30, "not full", "other"));
}

TEST_F(LoggerCache, OverflowsByMessagesOfAnyLevel) {
    for (int i = 0; i < 102; ++i) {
        doLog(logger(), LOG_LEVEL_NONE, "none");
    }
    installBackend("A");
    ASSERT_EQ(journal.size(), 102U);
    EXPECT_EQ(journal[100], line("A", 0, "none"));
    EXPECT_EQ(journal[101], overflow());
}

TEST_F(LoggerCache, IsDroppedWhenTheLoggerHasNoChannel) {
    logNumbered(1, 102);
    support::RecordingBackend& declining = makeBackend("D");
    declining.serves = [](const std::string&) {
        return false;
    };
    install(declining);

    logNumbered(7, 7); // also shows that the overflow is forgotten
    installBackend("A");

    EXPECT_EQ(journal, numbered(7, 7));
}

TEST_F(LoggerCache, KeepsItsOwnCopyOfTheText) {
    char text[] = "before";
    doLog(logger(), LOG_LEVEL_INFO, text);
    std::memcpy(text, "behind", sizeof(text));
    installBackend("A");
    EXPECT_EQ(journal, Journal{line("A", 30, "before")});
}

TEST_F(LoggerCache, IsFlushedToAllChannelsEntryByEntry) {
    // Level 0 waits although A is there, so that the next installation flushes to two channels.
    installBackend("A");
    doLog(logger(), LOG_LEVEL_NONE, "entry 1");
    doLog(logger(), LOG_LEVEL_NONE, "entry 2");

    installBackend("B");

    EXPECT_EQ(journal, (Journal{line("A", 0, "entry 1"), line("B", 0, "entry 1"),
                                line("A", 0, "entry 2"), line("B", 0, "entry 2")}));
}

TEST_F(LoggerCache, FillsAgainWhenTheLastBackendIsUninstalled) {
    support::RecordingBackend& backend = installBackend("A");
    Logger* const log = logger();
    Logger::uninstallBackend(&backend);

    doLog(log, LOG_LEVEL_ERROR, "while away");
    EXPECT_TRUE(journal.empty());

    install(backend);
    EXPECT_EQ(journal, Journal{line("A", 50, "while away")});
}

} // namespace
