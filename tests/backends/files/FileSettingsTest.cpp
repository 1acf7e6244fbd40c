#include "files/FileSettings.h"

#include <chrono>

#include <gtest/gtest.h>

#include "Property.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;

namespace {

TEST(FileSettings, AreTakenOverFromTheProperties) {
    setProperty("DailyFile.path", "shop.log");
    setProperty("DailyFile.size", "1K");
    setProperty("DailyFile.hour", "6");
    setProperty("DailyFile.minute", "30");
    setProperty("DailyFile.count", "7");
    setProperty("DailyFile.days", "8");
    setProperty("DailyFile.bytes", "9K");
    setProperty("DailyFile.compress", "gzip");
    setProperty("DailyFile.flush", "200ms");
    setProperty("DailyFile.mode", "0600");
    const Settings properties("DailyFile");
    const RotatingLogSettings settings = readFileSettings(properties);
    EXPECT_EQ(settings.path, "shop.log");
    EXPECT_EQ(settings.maxBytes, 1024U);
    EXPECT_TRUE(settings.clock.has_value());
    EXPECT_EQ(settings.retention.count, 7U);
    EXPECT_EQ(settings.retention.days, 8U);
    EXPECT_EQ(settings.retention.bytes, 9U * 1024);
    EXPECT_TRUE(settings.isCompressed);
    EXPECT_EQ(settings.flush.interval, 200ms);
    if (properties.has("mode")) {
        EXPECT_EQ(settings.mode, 0600U);
    }
}

TEST(FileSettings, HaveDefaultsWithoutProperties) {
    const RotatingLogSettings settings = readFileSettings(Settings("RotatingFile"));
    EXPECT_EQ(settings.path, "zol.log");
    EXPECT_EQ(settings.maxBytes, 10U * 1024 * 1024);
    EXPECT_FALSE(settings.clock.has_value());
    EXPECT_EQ(settings.retention.count, 5U);
    EXPECT_EQ(settings.retention.days, 0U);
    EXPECT_EQ(settings.retention.bytes, 0U);
    EXPECT_FALSE(settings.isCompressed);
    EXPECT_FALSE(settings.flush.interval.has_value());
    EXPECT_FALSE(settings.mode.has_value());
}

} // namespace
