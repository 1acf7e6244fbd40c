// What reaches a sink, and what reaches standard error, is one line of valid UTF-8.

#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "Diagnostics.h"
#include "RecordingSink.h"

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;

namespace {

TEST(EscapedMessages, EscapesTheMessageAndTheNameOfTheLogger) {
    std::vector<RecordedLine> written;
    const auto test = recordingBackend(written, 1000);
    test->createChannel("or\nders\x9B")
        ->log(LOG_LEVEL_ERROR, "sold\xE9\x1B[2J\u2028"
                               "out\n");
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written[0].logger, "or\\nders\xEF\xBF\xBD");
    EXPECT_EQ(written[0].payload, "ERROR [or\\nders\xEF\xBF\xBD] sold\xEF\xBF\xBD\\x1B[2J\\u2028"
                                  "out");
}

TEST(EscapedMessages, TruncatesAMessageBetweenEscapes) {
    std::vector<RecordedLine> written;
    const auto test = recordingBackend(written, 20);
    test->createChannel("a")->log(LOG_LEVEL_INFO, "\x1B\x1B\x1B\x1B\x1B");
    test->createChannel("a")->log(LOG_LEVEL_INFO, "123456789\x1B");
    ASSERT_EQ(written.size(), 2U);
    EXPECT_EQ(written[0].payload, "INFO [a] \\x1B\\x1B...");
    EXPECT_EQ(written[1].payload, "INFO [a] 12345678...");
}

TEST(EscapedMessages, TruncatesANameOfALoggerThatLeavesNoRoom) {
    std::vector<RecordedLine> written;
    const auto test = recordingBackend(written, 20);
    test->createChannel("a name of a logger that is long")->log(LOG_LEVEL_INFO, "text");
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written[0].payload, "INFO [a name of a...");
}

TEST(EscapedMessages, EscapesReportsOnStandardError) {
    testing::internal::CaptureStderr();
    reportToStderr("Te\nst", "no \xE9 \x1B[2J\u0085 file\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Te\\nst: no \xEF\xBF\xBD \\x1B[2J\\x85 file\n");
}

} // namespace
