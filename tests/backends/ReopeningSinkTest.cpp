#include "ReopeningSink.h"

#include <functional>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

using namespace ZOL::Backends;
using namespace std::chrono_literals;

namespace {

/// How the sinks of a test behave, and what they have done.
struct SinkState {
    bool opens = true;
    bool writes = true;
    std::function<void()> onOpen = [] {
    };
    std::function<void()> onWrite = [] {
    };
    int opened = 0;
    int closed = 0;
    std::string written;
};

class FakeSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    explicit FakeSink(SinkState& state) : state_(state) {}
    FakeSink(const FakeSink&) = delete;
    FakeSink& operator=(const FakeSink&) = delete;
    ~FakeSink() override { ++state_.closed; }

protected:
    void sink_it_(const spdlog::details::log_msg& message) override {
        unflushed_ += std::string(message.payload.data(), message.payload.size()) + ";";
    }
    void flush_() override {
        state_.onWrite();
        if (!state_.writes) {
            throw std::runtime_error("cannot write");
        }
        state_.written += unflushed_;
        unflushed_.clear();
    }

private:
    SinkState& state_;
    std::string unflushed_;
};

class ReopeningSinkTest : public testing::Test {
protected:
    ReopeningSink reopeningSink(std::chrono::milliseconds retryInterval) {
        SinkOptions options;
        options.factory = [this]() -> std::unique_ptr<spdlog::sinks::sink> {
            ++state.opened;
            state.onOpen();
            if (!state.opens) {
                throw std::runtime_error("cannot open");
            }
            return std::make_unique<FakeSink>(state);
        };
        options.retryInterval = retryInterval;
        return ReopeningSink({"Test", "%v", spdlog::pattern_time_type::local, drops}, options);
    }

    static void write(ReopeningSink& sink, const char* text) {
        Record record;
        record.line = text;
        sink.write(record);
    }

    SinkState state;
    DropCounter drops{"Test"};
};

TEST_F(ReopeningSinkTest, OpensAtTheFirstMessageAndFlushesEachMessage) {
    ReopeningSink sink = reopeningSink(0ms);
    EXPECT_EQ(state.opened, 0);
    write(sink, "a");
    EXPECT_EQ(state.written, "a;");
    write(sink, "b");
    EXPECT_EQ(state.written, "a;b;");
    EXPECT_EQ(state.opened, 1);
}

TEST_F(ReopeningSinkTest, OpensOncePerRetryIntervalAndCountsDropsInBetween) {
    testing::internal::CaptureStderr();
    state.opens = false;
    ReopeningSink sink = reopeningSink(300ms);
    for (int i = 0; i < 1000; ++i) {
        write(sink, "dropped");
    }
    EXPECT_EQ(state.opened, 1) << "a thousand messages take less than the retry interval";
    state.opens = true;
    std::this_thread::sleep_for(310ms);
    write(sink, "a");
    EXPECT_EQ(state.written, "a;");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: cannot open\n"
              "ZOL back end Test: works again, lost messages: 1000\n");
}

TEST_F(ReopeningSinkTest, ReopensAtOnceIfAnOpenSinkFails) {
    testing::internal::CaptureStderr();
    ReopeningSink sink = reopeningSink(0ms);
    write(sink, "a");
    state.writes = false;
    write(sink, "dropped");
    EXPECT_EQ(state.opened, 2) << "one retry, not two";
    state.writes = true;
    write(sink, "b");
    EXPECT_EQ(state.written, "a;b;") << "the failed sink drops what it has not flushed";
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: cannot write\n"
              "ZOL back end Test: works again, lost messages: 1\n");
}

TEST_F(ReopeningSinkTest, WaitsForTheRetryIntervalAfterAFailureSoonAfterOpening) {
    testing::internal::CaptureStderr();
    ReopeningSink sink = reopeningSink(60s);
    write(sink, "a");
    state.writes = false;
    for (int i = 0; i < 100; ++i) {
        write(sink, "dropped");
    }
    EXPECT_EQ(state.opened, 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: cannot write\n");
}

TEST_F(ReopeningSinkTest, DoesNotTryTwiceAfterATimeout) {
    testing::internal::CaptureStderr();
    ReopeningSink sink = reopeningSink(0ms);
    write(sink, "a");
    int attempts = 0;
    state.onWrite = [&attempts] {
        ++attempts;
        throw SinkTimeout("timed out");
    };
    write(sink, "dropped");
    EXPECT_EQ(attempts, 1);
    EXPECT_EQ(state.opened, 1);
    EXPECT_EQ(state.closed, 1) << "the message may have been sent in part";
    state.onWrite = [] {
    };
    write(sink, "b");
    EXPECT_EQ(state.written, "a;b;");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: timed out\n"
              "ZOL back end Test: works again, lost messages: 1\n");
}

TEST_F(ReopeningSinkTest, StartsTheRetryIntervalAtATimeout) {
    testing::internal::CaptureStderr();
    ReopeningSink sink = reopeningSink(200ms);
    write(sink, "a");
    std::this_thread::sleep_for(210ms); // until it may open again
    state.onWrite = [] {
        throw SinkTimeout("timed out");
    };
    write(sink, "dropped");
    write(sink, "dropped");
    EXPECT_EQ(state.opened, 1);
    testing::internal::GetCapturedStderr();
}

TEST_F(ReopeningSinkTest, CountsTheRetryIntervalFromTheEndOfAnAttempt) {
    testing::internal::CaptureStderr();
    ReopeningSink sink = reopeningSink(200ms);
    state.onOpen = [] {
        std::this_thread::sleep_for(250ms); // longer than the retry interval
    };
    state.opens = false;
    write(sink, "dropped");
    write(sink, "dropped");
    EXPECT_EQ(state.opened, 1) << "after an attempt that failed";
    std::this_thread::sleep_for(210ms);
    state.opens = true;
    write(sink, "a");
    EXPECT_EQ(state.opened, 2);
    state.writes = false;
    write(sink, "dropped");
    EXPECT_EQ(state.opened, 2) << "after one that succeeded";
    testing::internal::GetCapturedStderr();
}

TEST_F(ReopeningSinkTest, SurvivesWhatIsNotAStandardException) {
    testing::internal::CaptureStderr();
    ReopeningSink sink = reopeningSink(0ms);
    state.onWrite = [] {
        throw 1; // NOLINT(hicpp-exception-baseclass)
    };
    write(sink, "dropped");
    EXPECT_EQ(state.closed, 1);
    state.onOpen = [] {
        throw 1; // NOLINT(hicpp-exception-baseclass)
    };
    write(sink, "dropped");
    state.onOpen = [] {
    };
    state.onWrite = [] {
    };
    write(sink, "a");
    EXPECT_EQ(state.written, "a;");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: for a reason unknown\n"
              "ZOL back end Test: works again, lost messages: 2\n");
}

} // namespace
