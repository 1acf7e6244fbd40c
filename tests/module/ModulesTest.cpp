// Host, modules and plug-in share one set of loggers, also when they are built differently.

#include <string>
#include <thread>

#include "LoggerFixture.h"

#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

using namespace ZOL::Framework::GenericLogger;
using support::Journal;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

constexpr const char* sharedName = "seen by A, B and host";

class Modules : public support::LoggerFixture {
protected:
    DLLHolder a{"ModuleA", ""};
    DLLHolder b{"ModuleB", ""};

    support::RecordingBackend& sharedBackend() {
        support::RecordingBackend& backend = makeBackend("H");
        backend.serves = [](const std::string& name) {
            return name == sharedName;
        };
        return backend;
    }
};

TEST_F(Modules, HoldTheSameLoggerAsTheHost) {
    Logger* const ofHost = Logger::getLogger(sharedName);
    EXPECT_EQ(a.resolve<Logger*(const char*)>("loggerOfA")(sharedName), ofHost);
    EXPECT_EQ(b.resolve<Logger*()>("loggerOfB")(), ofHost);
}

TEST_F(Modules, ShareOneCacheAndOneListOfBackends) {
    a.resolve<void(const char*, const char*)>("logFromA")(sharedName, "from A");
    b.resolve<void(const char*)>("logFromB")("from B");
    Logger::getLogger(sharedName)->error("from the host");

    // Installed by A, delivered for all.
    a.resolve<void(LoggerBackend*)>("installFromA")(&sharedBackend());
    b.resolve<void(const char*)>("logFromB")("live");

    EXPECT_EQ(journal, (Journal{std::string("H/") + sharedName + " 30 from A",
                                std::string("H/") + sharedName + " 40 from B",
                                std::string("H/") + sharedName + " 50 from the host",
                                std::string("H/") + sharedName + " 40 live"}));
}

TEST_F(Modules, SeeTheMinimumLevelThatOneOfThemSet) {
    bool (*const isActiveInB)(int) = b.resolve<bool(int)>("isActiveInB");
    void (*const setMinimumFromA)(const char*, int) =
        a.resolve<void(const char*, int)>("setMinimumFromA");
    setMinimumFromA(sharedName, LOG_LEVEL_DEFAULT);
    EXPECT_FALSE(isActiveInB(LOG_LEVEL_DEBUG));
    setMinimumFromA(sharedName, LOG_LEVEL_DEBUG);
    EXPECT_TRUE(isActiveInB(LOG_LEVEL_DEBUG));
    EXPECT_TRUE(Logger::getLogger(sharedName)->isLevelActive(LOG_LEVEL_DEBUG));
    setMinimumFromA(sharedName, LOG_LEVEL_DEFAULT);
}

TEST_F(Modules, CatchWhatTheFrameworkThrowsByItsType) {
    support::RecordingBackend& backend = sharedBackend();
    install(backend);
    EXPECT_TRUE(b.resolve<bool(LoggerBackend*)>("catchesInB")(&backend));
}

TEST_F(Modules, CatchWhatAnotherModuleThrowsByItsType) {
    try {
        b.resolve<void()>("throwFromB")();
        FAIL() << "nothing was thrown";
    } catch (const LoggerBackendLoadError& error) {
        EXPECT_STREQ(error.message(), "thrown in B");
        EXPECT_STREQ(error.what(), "class ZOL::Framework::GenericLogger::LoggerBackendLoadError' "
                                   "(B:1): thrown in B");
    }
}

TEST_F(Modules, LogTogetherFromTheirOwnThreads) {
    support::RecordingBackend& backend = sharedBackend();
    install(backend);
    void (*const logFromA)(const char*, const char*) =
        a.resolve<void(const char*, const char*)>("logFromA");
    void (*const logFromB)(const char*) = b.resolve<void(const char*)>("logFromB");
    std::thread first([&] {
        for (int i = 0; i < 200; ++i) {
            logFromA(sharedName, "a");
        }
    });
    std::thread second([&] {
        for (int i = 0; i < 200; ++i) {
            logFromB("b");
        }
    });
    first.join();
    second.join();
    EXPECT_EQ(journal.size(), 400U);
}

} // namespace
