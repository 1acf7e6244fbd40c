#include "SinkBackend.h"

#include <stdexcept>
#include <string>

#include <gtest/gtest.h>
#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "Property.h"
#include "ReopeningSink.h"

using namespace ZOL::Backends;
using namespace ZOL::Framework::GenericLogger;
using ZOL::Framework::Framework;

namespace {

// What the sinks of a test have done. Static, because a back end takes a function without state.
bool writes = true;
int opened = 0;
int closed = 0;
std::string written;
std::size_t maxLineBytes = 1000;

class FakeSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    FakeSink() { ++opened; }
    FakeSink(const FakeSink&) = delete;
    FakeSink& operator=(const FakeSink&) = delete;
    ~FakeSink() override { ++closed; }

protected:
    void sink_it_(const spdlog::details::log_msg& message) override {
        if (!writes) {
            throw std::runtime_error("cannot write");
        }
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        written.append(line.data(), line.size());
    }
    void flush_() override {}
};

WriterOptions readOptions(const Settings& settings) {
    static_cast<void>(settings.choice("colour"));
    SinkOptions options;
    options.factory = [] {
        return std::make_unique<FakeSink>();
    };
    options.lineEnd = ";";
    options.retryInterval = std::chrono::hours(1);
    return writerOptions(options, maxLineBytes);
}

/// A back end with the settings of Console.
class SinkBackendTest : public testing::Test {
protected:
    void SetUp() override {
        writes = true;
        opened = 0;
        closed = 0;
        written.clear();
        maxLineBytes = 1000;
        setProperty("Console.pattern", "%v");
        setProperty("Console.levels", "");
        testing::internal::CaptureStderr();
    }

    void TearDown() override {
        EXPECT_EQ(testing::internal::GetCapturedStderr(), "") << "unexpected report";
        for (const char* name : {"Console.pattern", "Console.levels", "Console.colour"}) {
            if (Framework::propertyManager()->hasProperty(support::wide(name))) {
                Framework::propertyManager()->clearProperty(support::wide(name));
            }
        }
    }

    static std::string report() {
        std::string text = testing::internal::GetCapturedStderr();
        testing::internal::CaptureStderr();
        return text;
    }

    static Settings settings() { return Settings("Console"); }
};

TEST_F(SinkBackendTest, ReturnsTheSameChannelForTheSameName) {
    SinkBackend backend(settings(), readOptions);
    LoggingChannel* const orders = backend.createChannel("orders");
    LoggingChannel* const stock = backend.createChannel("stock");
    EXPECT_EQ(backend.createChannel("orders"), orders);
    EXPECT_NE(orders, stock);
    orders->release();
    EXPECT_EQ(backend.createChannel("orders"), orders) << "a channel is never destroyed";
    orders->log(LOG_LEVEL_INFO, "x");
    stock->log(LOG_LEVEL_INFO, "y");
    EXPECT_EQ(written, "INFO [orders] x;INFO [stock] y;");
}

TEST_F(SinkBackendTest, AppliesTheRuleOfALoggerWhoseNameHasALineBreak) {
    setProperty("Console.levels", "two\nlines=ERROR;two\\nlines=OFF");
    SinkBackend backend(settings(), readOptions);
    LoggingChannel* const channel = backend.createChannel("two\nlines");
    channel->log(LOG_LEVEL_INFO, "dropped by the filter");
    channel->log(LOG_LEVEL_ERROR, "written");
    backend.createChannel("two")->log(LOG_LEVEL_INFO, "written");
    EXPECT_EQ(written, "ERROR [two\\nlines] written;INFO [two] written;");
}

TEST_F(SinkBackendTest, AppliesNewSettingsWithTheNextChannel) {
    SinkBackend backend(settings(), readOptions);
    LoggingChannel* const channel = backend.createChannel("orders");
    channel->log(LOG_LEVEL_INFO, "old");
    setProperty("Console.pattern", "<%v>");
    setProperty("Console.levels", "=ERROR");
    maxLineBytes = 17;
    backend.update(settings());
    channel->log(LOG_LEVEL_INFO, "old, although it has been read");
    EXPECT_EQ(closed, 0);
    EXPECT_EQ(written, "INFO [orders] old;INFO [orders] old, although it has been read;");
    written.clear();
    EXPECT_EQ(backend.createChannel("orders"), channel);
    EXPECT_EQ(closed, 1);
    channel->log(LOG_LEVEL_INFO, "dropped by the filter");
    channel->log(LOG_LEVEL_ERROR, "x");
    channel->log(LOG_LEVEL_ERROR, "truncated");
    EXPECT_EQ(written, "<ERROR [orders] x>;<ERROR [orders]...>;");
    EXPECT_EQ(opened, 2);
}

TEST_F(SinkBackendTest, KeepsItsSinkOpenIfTheSettingsAreTheSame) {
    SinkBackend backend(settings(), readOptions);
    backend.createChannel("orders")->log(LOG_LEVEL_INFO, "1");
    backend.update(settings());
    backend.createChannel("orders")->log(LOG_LEVEL_INFO, "2");
    EXPECT_EQ(opened, 1);
    setProperty("Console.pattern", "<%v>");
    backend.update(settings());
    setProperty("Console.pattern", "%v");
    backend.update(settings());
    backend.createChannel("orders")->log(LOG_LEVEL_INFO, "3");
    EXPECT_EQ(opened, 1) << "what was changed back was not applied in between";
    EXPECT_EQ(written, "INFO [orders] 1;INFO [orders] 2;INFO [orders] 3;");
}

TEST_F(SinkBackendTest, AppliesTheLastOfSeveralNewSettings) {
    SinkBackend backend(settings(), readOptions);
    for (const char* pattern : {"1%v", "2%v", "3%v"}) {
        setProperty("Console.pattern", pattern);
        backend.update(settings());
    }
    LoggingChannel* const channel = backend.createChannel("orders");
    channel->log(LOG_LEVEL_INFO, "x");
    backend.createChannel("stock");
    channel->log(LOG_LEVEL_INFO, "x");
    EXPECT_EQ(written, "3INFO [orders] x;3INFO [orders] x;");
    EXPECT_EQ(opened, 1) << "applied once";
}

TEST_F(SinkBackendTest, ReportsAnInvalidValueOnceUntilItChanges) {
    setProperty("Console.colour", "blue");
    SinkBackend backend(settings(), readOptions);
    EXPECT_NE(report(), "");
    backend.update(settings());
    EXPECT_EQ(report(), "");
    setProperty("Console.colour", "red");
    backend.update(settings());
    EXPECT_EQ(report(), "ZOL back end Console: the property Console.colour is \"red\" and not one "
                        "of auto, always, never; using auto\n");
    backend.update(settings());
    EXPECT_EQ(report(), "");
}

TEST_F(SinkBackendTest, OpensItsSinkAtOnceWithNewSettingsAndKeepsTheCountOfDrops) {
    SinkBackend backend(settings(), readOptions);
    LoggingChannel* const channel = backend.createChannel("orders");
    writes = false;
    for (int i = 0; i < 3; ++i) {
        channel->log(LOG_LEVEL_INFO, "dropped");
    }
    EXPECT_EQ(report(), "ZOL back end Console: messages are being lost: cannot write\n");
    writes = true;
    channel->log(LOG_LEVEL_INFO, "dropped until the retry interval has ended");
    setProperty("Console.pattern", "<%v>");
    backend.update(settings());
    backend.createChannel("orders")->log(LOG_LEVEL_INFO, "written");
    EXPECT_EQ(written, "<INFO [orders] written>;");
    EXPECT_EQ(report(), "ZOL back end Console: works again, lost messages: 4\n");
}

} // namespace
