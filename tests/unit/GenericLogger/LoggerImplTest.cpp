// The destruction of a logger's private block. The module never destroys a logger.

#include "ZOL/Framework/GenericLogger/LoggerImpl.h"

#include <string>
#include <utility>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

using Farewells = std::vector<std::string>;

class Channel final : public LoggingChannel {
public:
    Channel(std::string name, Farewells& farewells)
        : name_(std::move(name)), farewells_(farewells) {}

    void release() override { farewells_.push_back(name_ + " released"); }
    void log(LoggingLevel, const char* text) override { farewells_.push_back(name_ + " " + text); }

private:
    std::string name_;
    Farewells& farewells_;
};

class Backend final : public LoggerBackend {
public:
    Backend(const std::string& name, Farewells& farewells) : channel_(name, farewells) {}
    LoggingChannel* createChannel(const char*) override { return &channel_; }

private:
    Channel channel_;
};

TEST(LoggerImpls, ReleaseEveryChannelInOrderWhenDestroyed) {
    Farewells farewells;
    Backend a("A", farewells);
    Backend b("B", farewells);
    {
        LoggerImpl impl("logger");
        impl.connect({&a, &b});
        EXPECT_TRUE(farewells.empty());
    }
    EXPECT_EQ(farewells, (Farewells{"A released", "B released"}));
}

TEST(LoggerImpls, DeliverNoCachedMessageWhenDestroyed) {
    Farewells farewells;
    Backend a("A", farewells);
    {
        LoggerImpl impl("logger");
        impl.connect({&a});
        impl.cacheMessage(LOG_LEVEL_INFO, "cached");
    }
    EXPECT_EQ(farewells, Farewells{"A released"});
}

TEST(LoggerImpls, ReleaseNoChannelThatTheyHaveForgotten) {
    Farewells farewells;
    Backend a("A", farewells);
    Backend b("B", farewells);
    {
        LoggerImpl impl("logger");
        impl.connect({&a});
        impl.connect({&b});
    }
    EXPECT_EQ(farewells, Farewells{"B released"});
    {
        LoggerImpl impl("logger");
        impl.connect({&a});
        impl.forgetChannels();
        EXPECT_FALSE(impl.hasChannels());
    }
    EXPECT_EQ(farewells, Farewells{"B released"});
}

} // namespace
