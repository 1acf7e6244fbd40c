// Channels and back ends that call the logger on the thread that called them.

#include <algorithm>
#include <functional>
#include <stdexcept>
#include <string>
#include <vector>

#include "DoLog.h"
#include "LoggerFixture.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;
using support::Journal;
using support::RecordingBackend;

namespace {

class LoggerReentrancy : public support::LoggerFixture {
protected:
    /// Installs inner from the first message that outer's channels receive.
    void installAtFirstMessage(
        RecordingBackend& outer, RecordingBackend& inner,
        const std::function<void()>& afterwards = [] {}) {
        outer.beforeLog = [this, &inner, afterwards, installed = false](
                              const std::string&, LoggingLevel, const char*) mutable {
            if (!installed) {
                installed = true;
                install(inner);
                afterwards();
            }
        };
    }
};

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
    installAtFirstMessage(installBackend("A"), late);

    doLog(log, LOG_LEVEL_INFO, "text");

    EXPECT_EQ(journal, (Journal{line("A", 30, "text"), line("B", 30, "text")}));
}

// Longer than what a std::string stores in itself.
std::string longText(const std::string& start) {
    return start + std::string(60, '.');
}

TEST_F(LoggerReentrancy, AChannelThatInstallsABackendDuringAFlushCausesAnInnerFlushToAllChannels) {
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_INFO, longText("first").c_str());
    doLog(log, LOG_LEVEL_INFO, longText("second").c_str());
    RecordingBackend& outer = makeBackend("A");
    RecordingBackend& late = makeBackend("B");
    installAtFirstMessage(outer, late);

    install(outer);

    // The inner flush delivers everything and ends first; then A writes down the text of the outer
    // call, which must still be readable.
    EXPECT_EQ(journal,
              (Journal{line("A", 30, longText("first")), line("B", 30, longText("first")),
                       line("A", 30, longText("second")), line("B", 30, longText("second")),
                       line("A", 30, longText("first"))}));
}

TEST_F(LoggerReentrancy, AMessageCachedAfterAnInnerFlushReachesEveryChannelOnce) {
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_INFO, longText("first").c_str());
    RecordingBackend& outer = makeBackend("A");
    RecordingBackend& late = makeBackend("B");
    installAtFirstMessage(outer, late,
                          [&] { doLog(log, LOG_LEVEL_NONE, longText("added").c_str()); });

    install(outer);
    install(makeBackend("C")); // finds nothing left

    EXPECT_EQ(journal, (Journal{line("A", 30, longText("first")), line("B", 30, longText("first")),
                                line("A", 30, longText("first")), line("A", 0, longText("added")),
                                line("B", 0, longText("added"))}));
}

TEST_F(LoggerReentrancy, InnerFlushesOfSeveralDepthsLeaveEveryTextReadable) {
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_INFO, longText("first").c_str());
    RecordingBackend& outer = makeBackend("A");
    int depth = 0;
    outer.beforeLog = [&](const std::string&, LoggingLevel, const char*) {
        if (depth < 3) {
            const std::string number = std::to_string(++depth);
            install(makeBackend("B" + number));
            doLog(log, LOG_LEVEL_NONE, longText("added " + number).c_str());
        }
    };

    install(outer);

    const auto received = [&](const std::string& backend, int level, const std::string& text) {
        return std::count(journal.begin(), journal.end(), line(backend, level, longText(text)));
    };
    // Calls of A that installed a back end, one inside the other, and the innermost flush.
    EXPECT_EQ(received("A", 30, "first"), 4);
    EXPECT_EQ(received("B1", 30, "first"), 1);
    EXPECT_EQ(received("B3", 30, "first"), 1);
    for (const char* const text : {"added 1", "added 2", "added 3"}) {
        for (const char* const backend : {"A", "B1", "B2", "B3"}) {
            EXPECT_EQ(received(backend, 0, text), 1) << backend << " " << text;
        }
    }
    EXPECT_EQ(journal.size(), 4 + 3 + 12U);
}

TEST_F(LoggerReentrancy, AnInnerFlushOfOtherLoggersDeliversTheirCachesOnce) {
    for (const char* const name : {"a", "b", "c"}) {
        doLog(logger(name), LOG_LEVEL_INFO, longText(name).c_str());
    }
    RecordingBackend& outer = makeBackend("A");
    bool installed = false;
    outer.beforeLog = [&](const std::string& name, LoggingLevel, const char*) {
        if (name == named("b") && !installed) {
            installed = true;
            install(makeBackend("B"));
        }
    };

    install(outer);

    EXPECT_EQ(journal,
              (Journal{line("A", 30, longText("a"), "a"), line("A", 30, longText("b"), "b"),
                       line("B", 30, longText("b"), "b"), line("A", 30, longText("c"), "c"),
                       line("B", 30, longText("c"), "c"), line("A", 30, longText("b"), "b")}));
}

TEST_F(LoggerReentrancy, AnInnerFlushThatThrowsKeepsTheEntriesForTheNextFlush) {
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_INFO, longText("first").c_str());
    RecordingBackend& outer = makeBackend("A");
    RecordingBackend& failing = makeBackend("B");
    bool broken = true;
    failing.beforeLog = [&](const std::string&, LoggingLevel, const char*) {
        if (broken) {
            throw std::runtime_error("broken");
        }
    };
    bool installed = false;
    outer.beforeLog = [&](const std::string&, LoggingLevel, const char*) {
        if (!installed) {
            installed = true;
            EXPECT_THROW(install(failing), std::runtime_error);
        }
    };

    EXPECT_THROW(install(outer), std::runtime_error); // the outer flush goes on to B
    journal.clear();
    broken = false;
    install(makeBackend("C"));

    EXPECT_EQ(journal, (Journal{line("A", 30, longText("first")), line("B", 30, longText("first")),
                                line("C", 30, longText("first"))}));
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

TEST_F(LoggerReentrancy, ABackendThatInstallsAnotherFromCreateChannelAddsItsOwnChannelAfterThose) {
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_INFO, longText("cached").c_str());
    RecordingBackend& outer = makeBackend("A");
    RecordingBackend& inner = makeBackend("B");
    bool installed = false;
    outer.beforeCreate = [&](const std::string& name) {
        if (name == named("logger") && !installed) {
            installed = true;
            install(inner);
        }
    };

    install(outer);

    // The inner installation made channels of both and flushed. The outer one then appended the
    // channel that it was waiting for, and found the cache empty.
    EXPECT_EQ(asked(outer), (std::vector<std::string>{"logger", "logger"}));
    EXPECT_EQ(asked(inner), (std::vector<std::string>{"logger"}));
    EXPECT_EQ(journal,
              (Journal{line("A", 30, longText("cached")), line("B", 30, longText("cached"))}));
    journal.clear();
    doLog(log, LOG_LEVEL_INFO, "live");
    EXPECT_EQ(journal,
              (Journal{line("A", 30, "live"), line("B", 30, "live"), line("A", 30, "live")}));
}

TEST_F(LoggerReentrancy, ABackendThatInstallsAnotherForANewLoggerLeavesItToTheNextOne) {
    RecordingBackend& outer = installBackend("A");
    RecordingBackend& inner = makeBackend("B");
    bool installed = false;
    outer.beforeCreate = [&](const std::string&) {
        if (!installed) {
            installed = true;
            install(inner); // the new logger is not in the table yet, and has its copy of the list
        }
    };

    doLog(logger("first"), LOG_LEVEL_INFO, "text");
    doLog(logger("second"), LOG_LEVEL_INFO, "text");

    EXPECT_EQ(journal, (Journal{line("A", 30, "text", "first"), line("A", 30, "text", "second"),
                                line("B", 30, "text", "second")}));
}

TEST_F(LoggerReentrancy, ABackendThatIsUninstalledFromCreateChannelIsStillAskedInThatRound) {
    RecordingBackend& first = installBackend("A");
    RecordingBackend& second = installBackend("B");
    first.beforeCreate = [&](const std::string&) {
        Logger::uninstallBackend(&second);
        Logger::uninstallBackend(&first);
    };

    Logger* const log = logger();
    EXPECT_EQ(asked(first), std::vector<std::string>{"logger"});
    EXPECT_EQ(asked(second), std::vector<std::string>{"logger"});

    doLog(log, LOG_LEVEL_INFO, "cached"); // no back end is installed
    EXPECT_TRUE(journal.empty());
    logger("other");
    EXPECT_EQ(asked(second), std::vector<std::string>{"logger"});
    installBackend("C");
    EXPECT_EQ(journal, Journal{line("C", 30, "cached")});
}

TEST_F(LoggerReentrancy, ABackendThatUninstallsItselfDuringItsInstallationStaysOutOfTheList) {
    doLog(logger("a"), LOG_LEVEL_INFO, "a");
    doLog(logger("b"), LOG_LEVEL_INFO, "b");
    RecordingBackend& backend = makeBackend("A");
    backend.beforeCreate = [&](const std::string& name) {
        if (name == named("a")) {
            Logger::uninstallBackend(&backend);
        }
    };

    install(backend);

    // The list was empty when the walk reached b, whose cache therefore reached no channel.
    EXPECT_EQ(asked(backend), std::vector<std::string>{"a"});
    EXPECT_EQ(journal, Journal{line("A", 30, "a", "a")});
    backend.beforeCreate = nullptr;
    EXPECT_NO_THROW(install(backend));
}

} // namespace
