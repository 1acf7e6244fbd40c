// What remains valid after a channel or a back end throws.

#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "DoLog.h"
#include "LoggerFixture.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;
using support::Journal;
using support::RecordingBackend;

namespace {

struct PluginFailure {
    std::string text;
};

class ThrowingPlugin : public support::LoggerFixture {
protected:
    /// Makes the back end's channels throw at messages of this text.
    static void throwAt(RecordingBackend& backend, const std::string& poison) {
        backend.beforeLog = [poison](const std::string&, LoggingLevel, const char* text) {
            if (text == poison) {
                throw PluginFailure{poison};
            }
        };
    }

    /// Another thread can log, so the lock is free.
    void expectLockIsFree() {
        std::thread([&] { Logger::uninstallBackend(nullptr); }).join();
    }
};

TEST_F(ThrowingPlugin, AChannelsExceptionReachesTheCallerUnchangedAndEndsTheWalk) {
    throwAt(installBackend("A"), "poison");
    installBackend("B");
    Logger* const log = logger();

    try {
        doLog(log, LOG_LEVEL_INFO, "poison");
        FAIL() << "nothing was thrown";
    } catch (const PluginFailure& failure) {
        EXPECT_EQ(failure.text, "poison");
    }

    expectLockIsFree();
    EXPECT_TRUE(journal.empty()) << "B follows the channel that threw";
    doLog(log, LOG_LEVEL_INFO, "next");
    EXPECT_EQ(journal, (Journal{line("A", 30, "next"), line("B", 30, "next")}));
}

TEST_F(ThrowingPlugin, AChannelsExceptionLeavesThroughALogStream) {
    throwAt(installBackend("A"), "poison");
    EXPECT_THROW(logger()->info("poison"), PluginFailure);
    expectLockIsFree();
}

TEST_F(ThrowingPlugin, AChannelsExceptionIsDiscardedDuringStackUnwinding) {
    throwAt(installBackend("A"), "poison");
    Logger* const log = logger();
    const auto argument = []() -> int {
        throw std::out_of_range("the first");
    };

    EXPECT_THROW(log->info("poison") << argument(), std::out_of_range);
    expectLockIsFree();
}

TEST_F(ThrowingPlugin, AFlushThatThrowsKeepsTheWholeCacheAndTheBackend) {
    Logger* const log = logger();
    doLog(log, LOG_LEVEL_INFO, "1");
    doLog(log, LOG_LEVEL_INFO, "poison");
    doLog(log, LOG_LEVEL_INFO, "3");
    RecordingBackend& backend = makeBackend("A");
    throwAt(backend, "poison");

    EXPECT_THROW(install(backend), PluginFailure);
    expectLockIsFree();
    EXPECT_EQ(journal, Journal{line("A", 30, "1")});

    // It is installed nevertheless: live messages reach it, and a second installation is refused.
    doLog(log, LOG_LEVEL_INFO, "live");
    EXPECT_EQ(journal.back(), line("A", 30, "live"));
    EXPECT_ANY_THROW(install(backend));

    // Messages that had been delivered are delivered again.
    journal.clear();
    backend.beforeLog = nullptr;
    installBackend("B");
    EXPECT_EQ(journal, (Journal{line("A", 30, "1"), line("B", 30, "1"), line("A", 30, "poison"),
                                line("B", 30, "poison"), line("A", 30, "3"), line("B", 30, "3")}));
}

TEST_F(ThrowingPlugin, AFlushThatThrowsKeepsTheOverflow) {
    Logger* const log = logger();
    for (int i = 0; i < 102; ++i) {
        doLog(log, LOG_LEVEL_INFO, "text");
    }
    RecordingBackend& backend = makeBackend("A");
    throwAt(backend, "LOG Cache overflow...");
    EXPECT_THROW(install(backend), PluginFailure);
    Logger::uninstallBackend(&backend);

    doLog(log, LOG_LEVEL_INFO, "dropped: the cache is still full");
    journal.clear();
    backend.beforeLog = nullptr;
    install(backend);

    ASSERT_EQ(journal.size(), 102U);
    EXPECT_EQ(journal.back(), line("A", 40, "LOG Cache overflow..."));
}

TEST_F(ThrowingPlugin, LoggersAfterTheOneThatThrewAreNotRefreshed) {
    for (const char* const name : {"a", "b", "c"}) {
        doLog(logger(name), LOG_LEVEL_INFO, name);
    }
    RecordingBackend& backend = makeBackend("A");
    throwAt(backend, "b");

    EXPECT_THROW(install(backend), PluginFailure);

    EXPECT_EQ(journal, Journal{line("A", 30, "a", "a")});
    EXPECT_EQ(asked(backend), (std::vector<std::string>{"a", "b"}));
    doLog(logger("c"), LOG_LEVEL_INFO, "cached, c has no channel yet");
    EXPECT_EQ(journal.size(), 1U);
}

TEST_F(ThrowingPlugin, ABackendThatThrowsInAnInstallationLeavesAPartialChannelList) {
    Logger* const log = logger();
    installBackend("A");
    RecordingBackend& thrower = makeBackend("T");
    thrower.beforeCreate = [this](const std::string& name) {
        if (name == named("logger")) {
            throw PluginFailure{"create"};
        }
    };

    EXPECT_THROW(install(thrower), PluginFailure);
    expectLockIsFree();

    // A's channel was rebuilt before T threw, and T is on the list.
    doLog(log, LOG_LEVEL_INFO, "text");
    EXPECT_EQ(journal, Journal{line("A", 30, "text")});
    EXPECT_ANY_THROW(install(thrower));
}

TEST_F(ThrowingPlugin, AFirstBackendThatThrowsInCreateChannelLeavesTheCacheAlone) {
    doLog(logger(), LOG_LEVEL_INFO, "waiting");
    RecordingBackend& thrower = makeBackend("T");
    thrower.beforeCreate = [this](const std::string& name) {
        if (name == named("logger")) {
            throw PluginFailure{"create"};
        }
    };
    EXPECT_THROW(install(thrower), PluginFailure);

    thrower.beforeCreate = nullptr;
    installBackend("A");
    EXPECT_EQ(journal, (Journal{line("T", 30, "waiting"), line("A", 30, "waiting")}));
}

TEST_F(ThrowingPlugin, ABackendThatThrowsInGetLoggerLeavesNoEntryAndTheNextCallStartsOver) {
    RecordingBackend& first = installBackend("A");
    RecordingBackend& thrower = installBackend("T");
    thrower.beforeCreate = [](const std::string&) {
        throw PluginFailure{"create"};
    };

    EXPECT_THROW(logger("new"), PluginFailure);
    expectLockIsFree();
    EXPECT_THROW(logger("new"), PluginFailure) << "an entry would be found without asking T";
    EXPECT_EQ(first.releases, 0) << "an abandoned logger does not release its channels";

    thrower.beforeCreate = nullptr;
    doLog(logger("new"), LOG_LEVEL_INFO, "text");
    EXPECT_EQ(journal, (Journal{line("A", 30, "text", "new"), line("T", 30, "text", "new")}));
}

} // namespace
