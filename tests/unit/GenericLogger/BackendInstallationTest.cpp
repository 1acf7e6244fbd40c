#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include "DoLog.h"
#include "LoggerFixture.h"

#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;
using support::Journal;
using support::RecordingBackend;

namespace {

class BackendInstallation : public support::LoggerFixture {
protected:
    using Names = std::vector<std::string>;

    LoggerBackendLoadError refusal(LoggerBackend* backend) {
        try {
            Logger::installBackend(backend);
        } catch (const LoggerBackendLoadError& error) {
            return error;
        }
        ADD_FAILURE() << "installBackend did not refuse";
        return {"", "", 0};
    }
};

TEST_F(BackendInstallation, DeliversTheCachesOfAllLoggersBeforeItReturns) {
    doLog(logger("b"), LOG_LEVEL_INFO, "b 1");
    doLog(logger("a"), LOG_LEVEL_INFO, "a 1");
    doLog(logger("b"), LOG_LEVEL_INFO, "b 2");

    installBackend("A");

    EXPECT_EQ(journal, (Journal{line("A", 30, "a 1", "a"), line("A", 30, "b 1", "b"),
                                line("A", 30, "b 2", "b")}));
}

TEST_F(BackendInstallation, VisitsLoggersByAscendingNameByteByByteShorterFirst) {
    for (const char* const name : {"b", "a\xC3\xA9", "B", "ab", "a", "aB", ""}) {
        logger(name);
    }
    EXPECT_EQ(asked(installBackend("A")), (Names{"", "B", "a", "aB", "ab", "a\xC3\xA9", "b"}));
}

TEST_F(BackendInstallation, FinishesOneLoggerBeforeTheNext) {
    doLog(logger("a"), LOG_LEVEL_INFO, "a");
    logger("b");
    RecordingBackend& backend = makeBackend("A");
    backend.beforeCreate = [&](const std::string& name) {
        journal.push_back("create " + name);
    };

    install(backend);

    // Other tests' loggers in the same process are asked as well.
    const auto begin = std::find(journal.begin(), journal.end(), "create " + named("a"));
    ASSERT_NE(begin, journal.end());
    EXPECT_EQ(Journal(begin, begin + 3),
              (Journal{"create " + named("a"), line("A", 30, "a", "a"), "create " + named("b")}));
}

TEST_F(BackendInstallation, ANewLoggerIsOfferedToEveryBackendInInstallationOrder) {
    RecordingBackend& a = makeBackend("A");
    RecordingBackend& b = makeBackend("B");
    std::string order;
    a.beforeCreate = [&](const std::string&) {
        order += "A";
    };
    b.beforeCreate = [&](const std::string&) {
        order += "B";
    };
    install(b);
    install(a);
    order.clear();

    logger("new");

    EXPECT_EQ(order, "BA");
    EXPECT_EQ(asked(a), Names{"new"});
    EXPECT_EQ(asked(b), Names{"new"});
}

TEST_F(BackendInstallation, AKnownLoggerIsNotOfferedAgainByGetLogger) {
    RecordingBackend& a = installBackend("A");
    logger();
    logger();
    EXPECT_EQ(asked(a), Names{"logger"});
}

TEST_F(BackendInstallation, ASecondBackendMakesTheFirstAnswerAgainForEveryLoggerEarlierFirst) {
    logger("a");
    logger("b");
    RecordingBackend& first = installBackend("A");
    std::string order;
    first.beforeCreate = [&](const std::string& name) {
        order += " A:" + name;
    };
    RecordingBackend& second = makeBackend("B");
    second.beforeCreate = [&](const std::string& name) {
        order += " B:" + name;
    };

    install(second);

    EXPECT_EQ(asked(first), (Names{"a", "b", "a", "b"}));
    EXPECT_EQ(asked(second), (Names{"a", "b"}));
    EXPECT_NE(order.find(" A:" + named("a") + " B:" + named("a") + " A:" + named("b") +
                         " B:" + named("b")),
              std::string::npos)
        << order;
}

TEST_F(BackendInstallation, ChannelsOfAnUninstalledBackendStillReceiveWhileAnotherIsInstalled) {
    RecordingBackend& leaving = installBackend("A");
    installBackend("B");
    Logger* const log = logger();

    Logger::uninstallBackend(&leaving);
    doLog(log, LOG_LEVEL_INFO, "still");
    EXPECT_EQ(journal, (Journal{line("A", 30, "still"), line("B", 30, "still")}));

    journal.clear();
    installBackend("C");
    doLog(log, LOG_LEVEL_INFO, "gone");
    EXPECT_EQ(journal, (Journal{line("B", 30, "gone"), line("C", 30, "gone")}));
}

TEST_F(BackendInstallation, AnUninstalledBackendIsNotAskedForNewLoggers) {
    RecordingBackend& leaving = installBackend("A");
    installBackend("B");
    Logger::uninstallBackend(&leaving);

    doLog(logger("new"), LOG_LEVEL_INFO, "text");

    EXPECT_TRUE(asked(leaving).empty());
    EXPECT_EQ(journal, Journal{line("B", 30, "text", "new")});
}

TEST_F(BackendInstallation, UninstallingCallsNothingOnBackendOrChannels) {
    RecordingBackend& backend = installBackend("A");
    logger();
    const std::size_t before = backend.asked.size();

    Logger::uninstallBackend(&backend);

    EXPECT_EQ(backend.asked.size(), before);
    EXPECT_EQ(backend.releases, 0);
    EXPECT_TRUE(journal.empty());
}

TEST_F(BackendInstallation, ReinstallationForgetsChannelsWithoutReleasingThem) {
    RecordingBackend& backend = installBackend("A");
    logger();
    installBackend("B");
    EXPECT_EQ(backend.releases, 0);
}

TEST_F(BackendInstallation, UninstallingAStrangerOrNullHasNoEffect) {
    RecordingBackend& stranger = makeBackend("S");
    installBackend("A");

    Logger::uninstallBackend(&stranger);
    Logger::uninstallBackend(nullptr);

    doLog(logger(), LOG_LEVEL_INFO, "text");
    EXPECT_EQ(journal, Journal{line("A", 30, "text")});
}

TEST_F(BackendInstallation, UninstallingOneOfFourKeepsTheOrderOfTheOthers) {
    installBackend("A");
    RecordingBackend& leaving = installBackend("B");
    installBackend("C");
    installBackend("D");
    Logger::uninstallBackend(&leaving);

    doLog(logger(), LOG_LEVEL_INFO, "text");

    EXPECT_EQ(journal,
              (Journal{line("A", 30, "text"), line("C", 30, "text"), line("D", 30, "text")}));
}

TEST_F(BackendInstallation, HoldsTheLockFromItsChecksOn) {
    RecordingBackend& contended = makeBackend("C");
    std::atomic<bool> entered = false;
    std::atomic<bool> otherStarted = false;
    bool installedFromInside = false;
    installBackend("A").beforeLog = [&](const std::string&, LoggingLevel, const char*) {
        entered = true;
        while (!otherStarted) {
            std::this_thread::yield();
        }
        std::this_thread::sleep_for(std::chrono::milliseconds(50));
        install(contended); // the other thread waits, and has not entered it yet
        installedFromInside = true;
    };
    Logger* const log = logger();

    bool refused = false;
    std::thread other([&] {
        while (!entered) {
            std::this_thread::yield();
        }
        otherStarted = true;
        try {
            Logger::installBackend(&contended);
        } catch (const LoggerBackendLoadError&) {
            refused = true;
        }
    });
    EXPECT_NO_THROW(doLog(log, LOG_LEVEL_INFO, "text"));
    other.join();

    EXPECT_TRUE(installedFromInside);
    EXPECT_TRUE(refused);
}

TEST_F(BackendInstallation, AReinstalledBackendIsLastInTheList) {
    RecordingBackend& first = installBackend("A");
    installBackend("B");
    Logger::uninstallBackend(&first);
    install(first);

    doLog(logger(), LOG_LEVEL_INFO, "text");

    EXPECT_EQ(journal, (Journal{line("B", 30, "text"), line("A", 30, "text")}));
}

TEST_F(BackendInstallation, RefusesNullAndChangesNothing) {
    installBackend("A");
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_NONE, "waits");

    const LoggerBackendLoadError error = refusal(nullptr);

    EXPECT_STREQ(error.message(), "Cannot install a NULL backend!");
    EXPECT_STREQ(error.filename(), "src\\ZOL\\Framework\\GenericLogger\\Logger");
    EXPECT_EQ(error.lineNumber(), 256);
    EXPECT_STREQ(
        error.what(),
        "class ZOL::Framework::GenericLogger::LoggerBackendLoadError' "
        "(src\\ZOL\\Framework\\GenericLogger\\Logger:256): Cannot install a NULL backend!");
    EXPECT_TRUE(journal.empty()) << "a refusal must not flush";
    doLog(log, LOG_LEVEL_INFO, "text");
    EXPECT_EQ(journal, Journal{line("A", 30, "text")});
}

TEST_F(BackendInstallation, RefusesTheSameBackendTwiceAndKeepsOneEntry) {
    RecordingBackend& backend = installBackend("A");
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_NONE, "waits");
    const std::size_t before = backend.asked.size();

    const LoggerBackendLoadError error = refusal(&backend);

    EXPECT_STREQ(error.message(), "Cannot install a backend twice!");
    EXPECT_STREQ(error.filename(), "src\\ZOL\\Framework\\GenericLogger\\Logger");
    EXPECT_EQ(error.lineNumber(), 263);
    EXPECT_EQ(backend.asked.size(), before);
    EXPECT_TRUE(journal.empty()) << "a refusal must not flush";
    doLog(log, LOG_LEVEL_INFO, "once");
    EXPECT_EQ(journal, Journal{line("A", 30, "once")});

    // One entry: one removal empties the list.
    Logger::uninstallBackend(&backend);
    journal.clear();
    doLog(log, LOG_LEVEL_INFO, "cached");
    EXPECT_TRUE(journal.empty());
}

TEST_F(BackendInstallation, ARefusalIsCaughtAsLoggerException) {
    EXPECT_THROW(Logger::installBackend(static_cast<LoggerBackend*>(nullptr)), LoggerException);
}

TEST_F(BackendInstallation, ARefusalReleasesTheLock) {
    refusal(nullptr);
    // Would deadlock if another thread could not take the lock.
    std::thread([&] { logger("from another thread"); }).join();
}

} // namespace
