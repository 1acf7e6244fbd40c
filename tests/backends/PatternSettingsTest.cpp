// The settings "pattern" and "time" of a back end.

#include <chrono>
#include <ctime>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Property.h"
#include "RecordingSink.h"

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Framework;

namespace {

class PatternSettings : public testing::Test {
protected:
    void TearDown() override {
        for (const char* name : {"Test.pattern", "Test.time"}) {
            if (Framework::propertyManager()->hasProperty(support::wide(name))) {
                Framework::propertyManager()->clearProperty(support::wide(name));
            }
        }
    }

    /// The line of one message, and the reports.
    std::string log() {
        testing::internal::CaptureStderr();
        std::vector<RecordedLine> lines;
        recordingBackend(lines)->createChannel("orders")->log(
            static_cast<LoggingLevel>(LOG_LEVEL_INFO + 5), "sold\nout\n");
        reports = testing::internal::GetCapturedStderr();
        EXPECT_EQ(lines.size(), 1U);
        return lines.empty() ? "" : lines[0].line;
    }

    std::string reports;
};

TEST_F(PatternSettings, GiveTheLineItsForm) {
    setProperty("Test.pattern", "%l/%L/%n/%V/%y");
    EXPECT_EQ(log(), "INFO+5/I/orders/sold\\nout/14");
    EXPECT_EQ(reports, "");
}

TEST_F(PatternSettings, ReportUnknownFlagsInOneLine) {
    setProperty("Test.pattern", "%V %q");
    EXPECT_EQ(log(), "sold\\nout %q");
    EXPECT_EQ(reports,
              "ZOL back end Test: the property Test.pattern contains \"%q\" and not only % "
              "with one of aAbBcCdDeEfFhHiIlLmMnNoOpPrRStTuvVWxXyYz%^$; writing \"%q\" as "
              "it is\n");
    setProperty("Test.pattern", "%s%V%q%");
    EXPECT_EQ(log(), "%ssold\\nout%q%");
    EXPECT_NE(reports.find("contains \"%s\", \"%q\", \"%\" and not"), std::string::npos) << reports;
    EXPECT_EQ(reports.find('\n'), reports.size() - 1) << reports;
}

TEST_F(PatternSettings, ReportAnInvalidTime) {
    setProperty("Test.time", "gmt");
    log();
    EXPECT_NE(
        reports.find("the property Test.time is \"gmt\" and not one of local, utc; using local"),
        std::string::npos)
        << reports;
}

} // namespace
