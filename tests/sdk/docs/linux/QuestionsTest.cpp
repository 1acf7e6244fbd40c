// What questions.md says of fork.

#include <string>
#include <string_view>
#include <vector>

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

class ForkBackend final : public LoggerBackend, public LoggingChannel {
public:
    LoggingChannel* createChannel(const char* logger) override {
        return std::string_view(logger) == "fork" ? this : nullptr;
    }
    void release() override {}
    void log(LoggingLevel, const char* text) override { lines.emplace_back(text); }

    std::vector<std::string> lines;
};

TEST(Questions, BothProcessesDeliverCachedMessagesAfterFork) {
    Logger* const logger = Logger::getLogger("fork");
    logger->info("cached");
    const pid_t child = fork();
    ASSERT_NE(child, -1);

    ForkBackend backend;
    Logger::installBackend(&backend);
    logger->info("after fork");
    const bool asDocumented = backend.lines == std::vector<std::string>{"cached", "after fork"};
    if (child == 0) {
        _exit(asDocumented ? 0 : 1);
    }
    EXPECT_TRUE(asDocumented);
    Logger::uninstallBackend(&backend);
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
