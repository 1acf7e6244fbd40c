// The examples of diagnostics.md, with what the document says of them.

#include <fstream>
#include <iostream>
#include <iterator>
#include <map>
#include <set>
#include <stdexcept>
#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/Counting/Counter.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Testing/CapturedLog.h"

using namespace ZOL::Framework::GenericLogger;
using ZOL::Testing::CapturedLog;

namespace {

#include "ProbeClass.inc"

#include "WatchedClass.inc"

#include "is_installed.inc"

TEST(Diagnostics, AProbeSeesAllLoggersAndLeavesTheOthersTheirChannels) {
    const CapturedLog other;
    Logger::getLogger("stock");
    Logger::getLogger("orders");
    testing::internal::CaptureStdout();
#include "probe.inc"
    EXPECT_EQ(testing::internal::GetCapturedStdout(), "orders\nstock\n");
    Logger::getLogger("orders")->info("after the probe");
    ASSERT_EQ(other.size(), 1U);
    EXPECT_EQ(other[0].text, "after the probe");
}

TEST(Diagnostics, AProbeAloneDropsCachedMessages) {
    Logger::getLogger("orders")->info("waits");
    Probe probe;
    Logger::installBackend(&probe);
    Logger::uninstallBackend(&probe);
    EXPECT_TRUE(CapturedLog().empty());
}

TEST(Diagnostics, AWatcherKnowsTheChannelsOfEachLogger) {
    testing::internal::CaptureStdout();
#include "watched.inc"
    const std::string seen = testing::internal::GetCapturedStdout();
    std::ifstream file(WATCHED_FILE);
    const std::string shown(std::istreambuf_iterator<char>(file), {});
    EXPECT_EQ(seen, shown);
    EXPECT_THROW(install("NoSuchBackend"), std::runtime_error);
}

TEST(Diagnostics, InstallingShowsWhetherABackEndIsInstalled) {
    Probe backend;
    EXPECT_FALSE(isInstalled(backend));
    Logger::installBackend(&backend);
    EXPECT_TRUE(isInstalled(backend));
    Logger::uninstallBackend(&backend);

    LoggerBackend* const console = Logger::installBackend("Console");
    EXPECT_EQ(Logger::loadBackend("Console"), console);
}

TEST(Diagnostics, ACounterShowsWhetherModulesShare) {
    using ZOL::Framework::Counting::Counter;
    const auto nextInModule = [](const char* name) {
        return Counter::counter(name).next();
    };
#include "sharing.inc"
    EXPECT_TRUE(shared);
}

} // namespace
