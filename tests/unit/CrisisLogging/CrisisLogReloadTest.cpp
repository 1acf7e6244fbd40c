// The crisis log when the framework is loaded and unloaded at run time. This program is not linked
// with it: a module loads it, and unloads it with itself. The log's file stays open.

#include <array>
#include <string>

#include <gtest/gtest.h>

#include "CrisisLogSandbox.h"
#include "LoadedModule.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::CrisisLogSandbox;
using ZOL::Framework::CrisisLogging::CrisisLogger;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

bool frameworkIsLoaded() {
    return support::isLoaded("ZOL_Framework", "2.0.8.129");
}

/// The message of the refusal; empty if the module gets the crisis log.
std::string refusalBy(const DLLHolder& module) {
    std::array<char, 100> why = {};
    module.resolve<bool(char*, int)>("askForCrisisLog")(why.data(), static_cast<int>(why.size()));
    return why.data();
}

CRISIS_LOG_TEST(CrisisLogReload, LeavesNoFileBehindIfTheCrisisLogWasNeverUsed) {
    {
        const DLLHolder module("CrisisModuleA", "");
        ASSERT_TRUE(frameworkIsLoaded());
        EXPECT_TRUE(CrisisLogSandbox::isFree());
    }
    ASSERT_FALSE(frameworkIsLoaded());
    EXPECT_TRUE(CrisisLogSandbox::isFree());
    const DLLHolder again("CrisisModuleA", "");
    EXPECT_EQ(refusalBy(again), "");
}

CRISIS_LOG_TEST(CrisisLogReload, TheFileStaysOpenAfterTheFrameworkIsUnloaded) {
    {
        const DLLHolder module("CrisisModuleA", "");
        module.resolve<void(const char*)>("logCrisis")("before it goes");
    }
    ASSERT_FALSE(frameworkIsLoaded());
    EXPECT_FALSE(CrisisLogSandbox::isFree());
}

CRISIS_LOG_TEST(CrisisLogReload, AReloadedFrameworkInTheSameProcessIsRefused) {
    {
        const DLLHolder module("CrisisModuleA", "");
        ASSERT_EQ(refusalBy(module), "");
    }
    ASSERT_FALSE(frameworkIsLoaded());
    const std::string refusal =
        std::string("Error opening log file: '") + CrisisLogSandbox::path + "'";
    const DLLHolder same("CrisisModuleA", "");
    const DLLHolder other("CrisisModuleB", "");
    EXPECT_EQ(refusalBy(same), refusal);
    EXPECT_EQ(refusalBy(other), refusal);
}

CRISIS_LOG_TEST(CrisisLogReload, StaysWithTheFrameworkWhileOneOfTwoModulesHoldsIt) {
    const DLLHolder staying("CrisisModuleA", "");
    const CrisisLogger* fromB = nullptr;
    {
        const DLLHolder going("CrisisModuleB", "");
        fromB = going.resolve<CrisisLogger*()>("crisisLogger")();
    }
    EXPECT_EQ(staying.resolve<CrisisLogger*()>("crisisLogger")(), fromB);
}

} // namespace
