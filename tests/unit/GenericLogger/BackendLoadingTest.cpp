// Back ends from real plug-ins, loaded by name.

#include <atomic>
#include <chrono>
#include <stdexcept>
#include <string>
#include <thread>
#include <vector>

#include "DoLog.h"
#include "LoggerFixture.h"

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;
using support::Journal;
using ZOL::Framework::Counting::Counter;

// This program exports an entry point of its own, as a host does that contains a back end. A load
// by name must not find it.
extern "C" ZOL_BACKEND_EXPORT LoggerBackend* createBackend();

static int hostEntryPointCalls = 0;

LoggerBackend* createBackend() {
    ++hostEntryPointCalls;
    return nullptr;
}

namespace {

class BackendLoading : public support::LoggerFixture {
protected:
    ~BackendLoading() override {
        for (LoggerBackend* const backend : loaded_) {
            Logger::uninstallBackend(backend);
        }
    }

    LoggerBackend* installByName(const char* name) {
        LoggerBackend* const backend = Logger::installBackend(name);
        loaded_.push_back(backend);
        return backend;
    }

    /// How many messages Good's channels have seen since the last time.
    static int goodCount() {
        Counter& messages = Counter::counter("Good.messages");
        const int count = messages.next();
        messages.reset();
        return count;
    }

    static std::string failure(const char* name) {
        try {
            Logger::loadBackend(name);
        } catch (const std::runtime_error& error) {
            return error.what();
        }
        return "no std::runtime_error";
    }

private:
    std::vector<LoggerBackend*> loaded_;
};

constexpr const char* unresolved =
    "Unable to resolve function createBackend from dynamic library\n"
    "Expression 'p != 0' failed in "
    "'D:\\Repository_x64\\ZOL_Gadgets\\include\\ZOL/Gadgets/DLL/DLLHolder', line: 25";

TEST_F(BackendLoading, InstallsAGoodPluginByNameAndItsChannelsGetTheMessages) {
    Logger* const log = Logger::getLogger("Good logger");
    doLog(log, LOG_LEVEL_INFO, "cached");
    EXPECT_NE(installByName("Good"), nullptr);
    EXPECT_EQ(goodCount(), 1);
    doLog(log, LOG_LEVEL_INFO, "live");
    EXPECT_EQ(goodCount(), 1);
}

TEST_F(BackendLoading, LoadingAloneInstallsNothing) {
    Logger* const log = Logger::getLogger("Good logger");
    doLog(log, LOG_LEVEL_NONE, "cached");
    LoggerBackend* const backend = Logger::loadBackend("Good");
    ASSERT_NE(backend, nullptr);
    doLog(log, LOG_LEVEL_INFO, "cached too");
    EXPECT_EQ(goodCount(), 0);

    Logger::installBackend(backend);
    EXPECT_EQ(goodCount(), 2);
    Logger::uninstallBackend(backend);
}

TEST_F(BackendLoading, ResultsOfTwoLoadsAreWhatTheEntryPointReturned) {
    EXPECT_EQ(Logger::loadBackend("Good"), Logger::loadBackend("Good"));
}

TEST_F(BackendLoading, TheSameObjectASecondTimeIsRefused) {
    installByName("Good");
    try {
        Logger::installBackend("Good");
        FAIL() << "nothing was thrown";
    } catch (const LoggerBackendLoadError& error) {
        EXPECT_STREQ(error.message(), "Cannot install a backend twice!");
        EXPECT_EQ(error.lineNumber(), 263);
    }
}

TEST_F(BackendLoading, AnEntryPointThatReturnsNullGivesNullAndInstallsNothing) {
    doLog(logger(), LOG_LEVEL_INFO, "stays cached");
    EXPECT_EQ(Logger::loadBackend("NullBackend"), nullptr);
    EXPECT_EQ(Logger::installBackend("NullBackend"), nullptr);

    installBackend("A");
    EXPECT_EQ(journal, Journal{line("A", 30, "stays cached")});
}

TEST_F(BackendLoading, AMissingLibraryIsAStandardRuntimeError) {
    EXPECT_EQ(failure("There_is_no_such_back_end"), unresolved);
}

TEST_F(BackendLoading, ALibraryWithoutTheEntryPointEndsInTheSameReport) {
    EXPECT_EQ(failure("NoEntryPoint"), unresolved);
}

TEST_F(BackendLoading, AFailedLoadDoesNotCallTheEntryPointOfTheProgram) {
    // The program itself can be found: the same call with its own handle resolves.
#if defined(_WIN32)
    ASSERT_NE(::GetProcAddress(::GetModuleHandleA(nullptr), "createBackend"), nullptr);
#else
    ASSERT_NE(::dlsym(RTLD_DEFAULT, "createBackend"), nullptr);
#endif
    for (const char* const name : {"There_is_no_such_back_end", "NoEntryPoint"}) {
        EXPECT_THROW(Logger::loadBackend(name), std::runtime_error) << name;
        EXPECT_THROW(Logger::installBackend(name), std::runtime_error) << name;
    }
    EXPECT_EQ(hostEntryPointCalls, 0);
}

TEST_F(BackendLoading, AFailedLoadIsNoLoggerException) {
    try {
        Logger::installBackend("There_is_no_such_back_end");
        FAIL() << "nothing was thrown";
    } catch (const LoggerException&) {
        FAIL();
    } catch (const std::runtime_error&) {
    }
}

TEST_F(BackendLoading, AFailedLoadChangesNothingAndReleasesTheLock) {
    installBackend("A");
    Logger* const log = logger();
    EXPECT_ANY_THROW(Logger::installBackend("NoEntryPoint"));
    std::thread([&] { doLog(log, LOG_LEVEL_INFO, "text"); }).join();
    EXPECT_EQ(journal, Journal{line("A", 30, "text")});
}

TEST_F(BackendLoading, AnExceptionOfTheEntryPointPropagatesAndTheLockIsReleased) {
    try {
        Logger::installBackend("ThrowingEntry");
        FAIL() << "nothing was thrown";
    } catch (const std::logic_error& error) {
        EXPECT_STREQ(error.what(), "no back end today");
    }
    std::thread([&] { logger("free"); }).join();
}

TEST_F(BackendLoading, APluginMayLogFromItsInitialiserAndFromItsEntryPoint) {
    // Both run on this thread under the lock that the load holds.
    EXPECT_NE(Logger::loadBackend("Chatty"), nullptr);

    support::RecordingBackend& reader = makeBackend("A");
    reader.serves = [](const std::string& name) {
        return name == "Chatty";
    };
    install(reader);
    EXPECT_EQ(journal,
              (Journal{"A/Chatty 30 from the initialiser", "A/Chatty 30 from createBackend"}));
}

TEST_F(BackendLoading, TheLoadRunsUnderTheLoggingLock) {
    // A thread inside a channel keeps the load waiting.
    std::atomic<bool> entered = false;
    std::atomic<bool> leave = false;
    std::atomic<bool> loaded = false;
    installBackend("A").beforeLog = [&](const std::string&, LoggingLevel, const char*) {
        entered = true;
        while (!leave) {
            std::this_thread::yield();
        }
    };
    Logger* const log = logger();
    std::thread inside([&] { doLog(log, LOG_LEVEL_INFO, "text"); });
    while (!entered) {
        std::this_thread::yield();
    }
    std::thread loading([&] {
        Logger::loadBackend("NullBackend");
        loaded = true;
    });
    std::this_thread::sleep_for(std::chrono::milliseconds(50));
    EXPECT_FALSE(loaded);
    leave = true;
    inside.join();
    loading.join();
    EXPECT_TRUE(loaded);
}

} // namespace
