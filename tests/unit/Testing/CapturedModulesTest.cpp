// One CapturedLog and several modules.

#include <cstddef>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "FreshProcess.h"
#include "LoadedModule.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"
#include "ZOL/Testing/CapturedLog.h"

using namespace ZOL::Framework::GenericLogger;
using support::inFreshProcess;
using ZOL::Gadgets::DLL::DLLHolder;
using ZOL::Testing::CapturedLog;
using ZOL::Testing::CapturedMessage;

namespace {

std::vector<std::string> textsOf(const CapturedLog& log) {
    std::vector<std::string> texts;
    for (const CapturedMessage& message : log) {
        texts.push_back(message.text);
    }
    return texts;
}

TEST(CapturedModules, ProgramModulesAndPlugInAreSeenInOneLog) {
    inFreshProcess([] {
        const DLLHolder a("ModuleA", "");
        const DLLHolder b("ModuleB", "");
        Logger::getLogger("host")->error("from the host");
        a.resolve<void(const char*, const char*)>("logFromA")("a", "from A");
        b.resolve<void(const char*)>("logFromB")("from B");

        CapturedLog captured; // the three wait, in the order of the loggers' names
        EXPECT_EQ(textsOf(captured),
                  (std::vector<std::string>{"from A", "from the host", "from B"}));

        captured.clear();
        b.resolve<void(const char*)>("logFromB")("from B");
        Logger::getLogger("host")->error("from the host");
        Logger::installBackend("Chatty"); // logs from its initialiser and from its entry point
        a.resolve<void(const char*, const char*)>("logFromA")("a", "from A");
        EXPECT_EQ(textsOf(captured),
                  (std::vector<std::string>{"from B", "from the host", "from the initialiser",
                                            "from createBackend", "from A"}));
    });
}

TEST(CapturedModules, LevelsAreOpenInEveryModule) {
    const DLLHolder b("ModuleB", "");
    const auto isActiveInB = b.resolve<bool(int)>("isActiveInB");
    EXPECT_FALSE(isActiveInB(LOG_LEVEL_TRACE));
    {
        const CapturedLog captured;
        EXPECT_TRUE(isActiveInB(LOG_LEVEL_TRACE));
    }
    EXPECT_FALSE(isActiveInB(LOG_LEVEL_TRACE));
}

void logTwoLines() {
    ZOL_LOG(Logger::getLogger("orders"), LOG_LEVEL_TRACE) << "one";
    ZOL_LOG(Logger::getLogger("orders"), LOG_LEVEL_TRACE) << "two";
}

TEST(CapturedModules, AModuleWithAKitOfItsOwnReceivesTheSame) {
    inFreshProcess([] {
        const DLLHolder module("CapturingModule", "");
        const auto capturedInModule = module.resolve<std::size_t(void (*)())>("capturedInModule");
        Logger* const orders = Logger::getLogger("orders");
        orders->minLogLevel(LOG_LEVEL_FATAL);
        EXPECT_EQ(capturedInModule(&logTwoLines), 2U);
        {
            const CapturedLog captured;
            EXPECT_EQ(capturedInModule(&logTwoLines), 2U);
            EXPECT_TRUE(orders->isLevelActive(LOG_LEVEL_TRACE));
            EXPECT_EQ(textsOf(captured), (std::vector<std::string>{"one", "two"}));
        }
        EXPECT_TRUE(orders->isLevelActive(LOG_LEVEL_FATAL));
        EXPECT_FALSE(orders->isLevelActive(static_cast<LoggingLevel>(LOG_LEVEL_FATAL - 1)));
    });
}

TEST(CapturedModules, AModuleWhoseKitWasNotUsedIsUnloaded) {
    inFreshProcess([] {
        const CapturedLog captured;
        {
            const DLLHolder module("CapturingModule", "");
            EXPECT_TRUE(support::isLoaded("CapturingModule", ""));
        }
        EXPECT_FALSE(support::isLoaded("CapturingModule", ""));
    });
}

} // namespace
