#include "LastingSink.h"

#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>
#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

using ZOL::Backends::LastingSink;
using namespace std::chrono_literals;

namespace {

/// What becomes of the sinks of a test.
struct World {
    bool opens = true;
    bool writes = true;
    int opened = 0;
    std::string written;
};

class WorldSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    explicit WorldSink(World& world) : world_(world) {}

protected:
    void sink_it_(const spdlog::details::log_msg& message) override {
        unflushed_ += std::string(message.payload.data(), message.payload.size()) + ";";
    }
    void flush_() override {
        if (!world_.writes) {
            throw std::runtime_error("cannot write");
        }
        world_.written += unflushed_;
        unflushed_.clear();
    }

private:
    World& world_;
    std::string unflushed_;
};

class LastingSinkInAWorld : public testing::Test {
protected:
    LastingSink sink(std::chrono::milliseconds pause) {
        const auto make = [this]() -> std::unique_ptr<spdlog::sinks::sink> {
            ++world.opened;
            if (!world.opens) {
                throw std::runtime_error("cannot open");
            }
            return std::make_unique<WorldSink>(world);
        };
        return LastingSink("Test", make, "%v", "\n", pause);
    }

    static void write(LastingSink& sink, const char* text) {
        sink.write(spdlog::details::log_msg("", spdlog::level::info, text));
    }

    World world;
};

TEST_F(LastingSinkInAWorld, OpensWithTheFirstMessageAndFlushesEach) {
    LastingSink lasting = sink(0ms);
    EXPECT_EQ(world.opened, 0);
    write(lasting, "a");
    EXPECT_EQ(world.written, "a;");
    write(lasting, "b");
    EXPECT_EQ(world.written, "a;b;");
    EXPECT_EQ(world.opened, 1);
}

TEST_F(LastingSinkInAWorld, TriesToOpenOncePerPauseAndCountsWhatIsLostMeanwhile) {
    testing::internal::CaptureStderr();
    world.opens = false;
    LastingSink lasting = sink(300ms);
    for (int i = 0; i < 1000; ++i) {
        write(lasting, "lost");
    }
    EXPECT_EQ(world.opened, 1) << "a thousand messages take less than the pause";
    world.opens = true;
    std::this_thread::sleep_for(310ms);
    write(lasting, "a");
    EXPECT_EQ(world.written, "a;");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: cannot open\n"
              "ZOL back end Test: works again, lost messages: 1000\n");
}

TEST_F(LastingSinkInAWorld, OpensAnewAtOnceForAMessageThatFailsAfterAWhile) {
    testing::internal::CaptureStderr();
    LastingSink lasting = sink(0ms);
    write(lasting, "a");
    world.writes = false;
    write(lasting, "lost");
    EXPECT_EQ(world.opened, 2) << "a second chance, not a third";
    world.writes = true;
    write(lasting, "b");
    EXPECT_EQ(world.written, "a;b;") << "what the failed sink held back went with it";
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: cannot write\n"
              "ZOL back end Test: works again, lost messages: 1\n");
}

TEST_F(LastingSinkInAWorld, WaitsForThePauseAfterAFailureSoonAfterOpening) {
    testing::internal::CaptureStderr();
    LastingSink lasting = sink(60s);
    write(lasting, "a");
    world.writes = false;
    for (int i = 0; i < 100; ++i) {
        write(lasting, "lost");
    }
    EXPECT_EQ(world.opened, 1);
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: cannot write\n");
}

} // namespace
