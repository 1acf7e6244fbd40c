// What reaches a sink, and what reaches standard error, is one line of valid UTF-8.

#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "Diagnostics.h"
#include "Property.h"
#include "SinkBackend.h"

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;

namespace {

struct Written {
    std::string logger;
    std::string line;
};

class RecordingSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    explicit RecordingSink(std::vector<Written>& written) : written_(written) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        written_.push_back({std::string(message.logger_name.data(), message.logger_name.size()),
                            std::string(line.data(), line.size())});
    }
    void flush_() override {}

    std::vector<Written>& written_;
};

class EscapedMessagesTest : public testing::Test {
protected:
    SinkBackend backend(std::size_t maxLineBytes) {
        SinkOptions options;
        options.factory = [this] {
            return std::make_unique<RecordingSink>(written);
        };
        setProperty("Test.pattern", "%v");
        options.lineEnd = "";
        options.maxLineBytes = maxLineBytes;
        return SinkBackend(Settings("Test"), options);
    }

    std::vector<Written> written;
};

TEST_F(EscapedMessagesTest, EscapesTheMessageAndTheNameOfTheLogger) {
    SinkBackend test = backend(1000);
    test.createChannel("or\nders\x9B")
        ->log(LOG_LEVEL_ERROR, "sold\xE9\x1B[2J\u2028"
                               "out\n");
    ASSERT_EQ(written.size(), 1U);
    EXPECT_EQ(written[0].logger, "or\\nders\xEF\xBF\xBD");
    EXPECT_EQ(written[0].line, "ERROR [or\\nders\xEF\xBF\xBD] sold\xEF\xBF\xBD\\x1B[2J\\u2028"
                               "out");
}

TEST_F(EscapedMessagesTest, TruncatesAMessageBetweenEscapes) {
    SinkBackend test = backend(20);
    test.createChannel("a")->log(LOG_LEVEL_INFO, "\x1B\x1B\x1B\x1B\x1B");
    test.createChannel("a")->log(LOG_LEVEL_INFO, "123456789\x1B");
    ASSERT_EQ(written.size(), 2U);
    EXPECT_EQ(written[0].line, "INFO [a] \\x1B\\x1B...");
    EXPECT_EQ(written[1].line, "INFO [a] 12345678...");
}

TEST_F(EscapedMessagesTest, EscapesReportsOnStandardError) {
    testing::internal::CaptureStderr();
    reportToStderr("Te\nst", "no \xE9 \x1B[2J\u0085 file\n");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Te\\nst: no \xEF\xBF\xBD \\x1B[2J\\x85 file\n");
}

} // namespace
