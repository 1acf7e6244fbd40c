// Statements that log some of their executions, in modules that are loaded and unloaded.

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "LoadedModule.h"
#include "LoggerFixture.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using ZOL::Framework::GenericLogger::Logger;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

constexpr int reloads = 1000;
constexpr std::size_t statements = 12;

class ReloadedStatements : public support::LoggerFixture {};

/// Executes the statements on two threads, so that some executions are suppressed.
void execute(const DLLHolder& module, Logger* logger) {
    const auto all = module.resolve<void(Logger*)>("executeStatements");
    std::thread([&] { all(logger); }).join();
    all(logger);
    all(logger);
}

TEST_F(ReloadedStatements, StartAgainInEachLoadedModule) {
    installBackend("a");
    Logger* const log = logger();
    for (int reload = 0; reload < reloads; ++reload) {
        journal.clear();
        {
            const DLLHolder module("StatementModule", "");
            execute(module, log);
        }
        ASSERT_FALSE(support::isLoaded("StatementModule", "")) << "after " << reload << " reloads";
        ASSERT_EQ(journal.size(), statements) << "after " << reload << " reloads";
        ASSERT_EQ(journal.front(), line("a", 60, "every n"));
    }
}

TEST_F(ReloadedStatements, CountForEachModuleAlone) {
    installBackend("a");
    const DLLHolder module("StatementModule", "");
    execute(module, logger());
    EXPECT_EQ(journal.size(), statements);
    const DLLHolder other("OtherStatementModule", "");
    execute(other, logger());
    EXPECT_EQ(journal.size(), 2 * statements);
}

} // namespace
