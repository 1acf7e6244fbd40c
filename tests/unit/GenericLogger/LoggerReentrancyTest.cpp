// Channels and back ends that call the logger on the thread that called them.

#include <string>
#include <vector>

#include "DoLog.h"
#include "LoggerFixture.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;
using support::Journal;
using support::RecordingBackend;

namespace {

class LoggerReentrancy : public support::LoggerFixture {};

TEST_F(LoggerReentrancy, AChannelMayLogToItsOwnLogger) {
    Logger* const log = logger();
    bool inside = false;
    installBackend("A").beforeLog = [&](const std::string&, LoggingLevel, const char* text) {
        if (!inside) {
            inside = true;
            doLog(log, LOG_LEVEL_INFO, (std::string(text) + ", again").c_str());
            inside = false;
        }
    };

    doLog(log, LOG_LEVEL_ERROR, "text");

    EXPECT_EQ(journal, (Journal{line("A", 30, "text, again"), line("A", 50, "text")}));
}

TEST_F(LoggerReentrancy, AMessageCachedDuringAFlushIsDeliveredInTheSameFlush) {
    installBackend("A");
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_NONE, "first");
    RecordingBackend& second = makeBackend("B");
    second.beforeLog = [&](const std::string&, LoggingLevel, const char* text) {
        if (std::string(text) == "first") {
            doLog(log, LOG_LEVEL_NONE, "added");
        }
    };

    install(second);

    EXPECT_EQ(journal, (Journal{line("A", 0, "first"), line("B", 0, "first"), line("A", 0, "added"),
                                line("B", 0, "added")}));
}

TEST_F(LoggerReentrancy, TheTextDeliveredInAFlushStaysValidWhileTheCacheGrows) {
    installBackend("A");
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_NONE, "short"); // short texts lie inside their cache entry
    RecordingBackend& second = makeBackend("B");
    bool grown = false;
    second.beforeLog = [&](const std::string&, LoggingLevel, const char*) {
        if (!grown) {
            grown = true;
            for (int i = 0; i < 200; ++i) {
                doLog(log, LOG_LEVEL_NONE, "added");
            }
        }
    };

    install(second);

    ASSERT_EQ(journal.size(), 2 * 102U);
    EXPECT_EQ(journal[1], line("B", 0, "short"));
    EXPECT_EQ(journal.back(), line("B", 40, "LOG Cache overflow..."));
}

TEST_F(LoggerReentrancy, AChannelThatInstallsABackendMakesTheLiveWalkGoOnOverTheNewChannels) {
    Logger* const log = logger();
    RecordingBackend& late = makeBackend("B");
    bool installed = false;
    installBackend("A").beforeLog = [&](const std::string&, LoggingLevel, const char*) {
        if (!installed) {
            installed = true;
            install(late);
        }
    };

    doLog(log, LOG_LEVEL_INFO, "text");

    EXPECT_EQ(journal, (Journal{line("A", 30, "text"), line("B", 30, "text")}));
}

TEST_F(LoggerReentrancy, AChannelThatUninstallsItsBackendIsNotCalledForTheNextMessage) {
    Logger* const log = logger();
    RecordingBackend& backend = installBackend("A");
    backend.beforeLog = [&](const std::string&, LoggingLevel, const char*) {
        Logger::uninstallBackend(&backend);
    };

    doLog(log, LOG_LEVEL_INFO, "last");
    doLog(log, LOG_LEVEL_INFO, "cached");

    EXPECT_EQ(journal, Journal{line("A", 30, "last")});
}

TEST_F(LoggerReentrancy, ABackendMayLogAndGetLoggersFromCreateChannel) {
    RecordingBackend& backend = makeBackend("A");
    backend.beforeCreate = [&](const std::string& name) {
        if (name == named("outer")) {
            doLog(logger("inner"), LOG_LEVEL_INFO, "asked for outer");
        }
    };
    install(backend);

    logger("outer");

    EXPECT_EQ(asked(backend), (std::vector<std::string>{"outer", "inner"}));
    EXPECT_EQ(journal, Journal{line("A", 30, "asked for outer", "inner")});
}

TEST_F(LoggerReentrancy, ALoggerMadeDuringAnInstallationIsVisitedIfItsNameSortsLater) {
    logger("b");
    RecordingBackend& backend = makeBackend("A");
    backend.beforeCreate = [&](const std::string& name) {
        if (name == named("b")) {
            logger("a");
            logger("c");
        }
    };

    install(backend);

    // b itself; a and c as new loggers; then c again when the walk reaches it.
    EXPECT_EQ(asked(backend), (std::vector<std::string>{"b", "a", "c", "c"}));
}

TEST_F(LoggerReentrancy, ABackendThatGetsTheLoggerBeingCreatedLeavesOneLogger) {
    RecordingBackend& backend = installBackend("A");
    Logger* inner = nullptr;
    bool inside = false;
    backend.beforeCreate = [&](const std::string&) {
        if (!inside) {
            inside = true;
            inner = logger("same");
        }
    };

    Logger* const outer = logger("same");

    EXPECT_EQ(outer, inner);
    EXPECT_EQ(outer, logger("same"));
    doLog(outer, LOG_LEVEL_INFO, "text");
    EXPECT_EQ(journal, Journal{line("A", 30, "text", "same")});
}

} // namespace
