// Statements that log some of their executions, in modules that are loaded and unloaded.

#include <cstddef>
#include <thread>

#include <gtest/gtest.h>

#include "LoadedModule.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Gadgets/DLL/DLLHolder.h"
#include "ZOL/Testing/CapturedLog.h"

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Gadgets::DLL::DLLHolder;
using ZOL::Testing::CapturedLog;

namespace {

constexpr int reloads = 1000;
constexpr std::size_t statements = 12;

/// Executes the statements on two threads, so that some executions are suppressed.
void execute(const DLLHolder& module, Logger* logger) {
    const auto all = module.resolve<void(Logger*)>("executeStatements");
    std::thread([&] { all(logger); }).join();
    all(logger);
    all(logger);
}

TEST(ReloadedStatements, StartAgainInEachLoadedModule) {
    CapturedLog captured;
    Logger* const logger = Logger::getLogger("logger");
    for (int reload = 0; reload < reloads; ++reload) {
        captured.clear();
        {
            const DLLHolder module("StatementModule", "");
            execute(module, logger);
        }
        ASSERT_FALSE(support::isLoaded("StatementModule", "")) << "after " << reload << " reloads";
        ASSERT_EQ(captured.size(), statements) << "after " << reload << " reloads";
        ASSERT_EQ(captured[0].text, "every n");
    }
}

TEST(ReloadedStatements, CountForEachModuleAlone) {
    const CapturedLog captured;
    Logger* const logger = Logger::getLogger("logger");
    const DLLHolder module("StatementModule", "");
    execute(module, logger);
    EXPECT_EQ(captured.size(), statements);
    const DLLHolder other("OtherStatementModule", "");
    execute(other, logger);
    EXPECT_EQ(captured.size(), 2 * statements);
}

} // namespace
