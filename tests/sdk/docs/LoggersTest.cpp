// The examples of the loggers' page, with what the page says of them.

#include <ios>
#include <stdexcept>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

class KeepingBackend final : public LoggerBackend, public LoggingChannel {
public:
    LoggingChannel* createChannel(const char*) override { return this; }
    void release() override {}
    void log(LoggingLevel level, const char* text) override {
        lines.push_back(std::to_string(level) + " " + text);
    }

    std::vector<std::string> lines;
};

TEST(Loggers, Logging) {
    KeepingBackend backend;
    Logger::installBackend(&backend);
#include "loggers.inc"
    EXPECT_EQ(backend.lines,
              (std::vector<std::string>{"50 out of stock", "30 order 17 from Graz", "40 pieces: ff",
                                        "35 any number is a level"}));
    Logger::uninstallBackend(&backend);
}

TEST(Loggers, Levels) {
    KeepingBackend backend;
    Logger::installBackend(&backend);
    Logger* const logger = Logger::getLogger("shop.orders");
    int calls = 0;
    const auto expensive = [&calls] {
        return ++calls;
    };
#include "loggers_levels.inc"
    EXPECT_EQ(backend.lines, (std::vector<std::string>{"50 sold out", "20 goes out"}));
    EXPECT_EQ(calls, 0);
    logger->minLogLevel(LOG_LEVEL_DEFAULT); // for a repeated run
    Logger::uninstallBackend(&backend);
}

TEST(Loggers, Installing) {
    Logger* const logger = Logger::getLogger("shop.orders");
    testing::internal::CaptureStderr();
#include "loggers_install.inc"
    const std::string written = testing::internal::GetCapturedStderr();
    EXPECT_NE(written.find("to one or the other"), std::string::npos) << written;

    KeepingBackend next;
    Logger::installBackend(&next);
    EXPECT_EQ(next.lines, (std::vector<std::string>{"30 waits for the next one"}));
    Logger::uninstallBackend(&next);
}

} // namespace
