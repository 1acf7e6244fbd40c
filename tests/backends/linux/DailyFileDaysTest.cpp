// DailyFile over several days, with a clock that the test moves.

#include <filesystem>
#include <set>
#include <string>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"
#include "TestClock.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

using Files = std::set<std::string>;

Files files() {
    Files names;
    for (const auto& entry : std::filesystem::directory_iterator(".")) {
        names.insert(entry.path().string());
    }
    return names;
}

void logOnDays(int days) {
    for (int day = 0; day < days; ++day) {
        Logger::getLogger("orders")->info() << "day " << day;
        support::TestClock::advance(24);
    }
}

TEST(DailyFileDays, HaveOneFileEach) {
    inFreshFolder([] {
        setProperty("DailyFile.pattern", "%v");
        Logger::installBackend("DailyFile");
        logOnDays(3);
        int day = 0;
        for (const std::string& file : files()) { // ascending names are ascending dates
            EXPECT_EQ(textOf(file), "INFO [orders] day " + std::to_string(day++) + "\n");
        }
        EXPECT_EQ(day, 3);
    });
}

TEST(DailyFileDays, BeyondTheConfiguredNumberAreRemoved) {
    inFreshFolder([] {
        setProperty("DailyFile.pattern", "%v");
        setProperty("DailyFile.days", "2");
        Logger::installBackend("DailyFile");
        logOnDays(5);
        const Files left = files();
        ASSERT_EQ(left.size(), 2U);
        EXPECT_EQ(textOf(*left.begin()), "INFO [orders] day 3\n");
        EXPECT_EQ(textOf(*left.rbegin()), "INFO [orders] day 4\n");
    });
}

} // namespace
