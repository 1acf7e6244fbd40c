#include <string>
#include <type_traits>
#include <vector>

#include "DoLog.h"
#include "LoggerFixture.h"
#include "SlotProbe.h"

using namespace ZOL::Framework::GenericLogger;
using support::doLog;
using support::firstSlotAfterDestructor;
using support::Journal;
using support::RecordingBackend;
using support::SlotProbe;

namespace {

class PluginContract : public support::LoggerFixture {};

static_assert(sizeof(LoggingChannel) == sizeof(void*), "a channel has no data");
static_assert(sizeof(LoggerBackend) == sizeof(void*), "a back end has no data");
static_assert(!std::is_destructible_v<LoggingChannel>, "a channel's destructor is protected");
static_assert(std::has_virtual_destructor_v<LoggerBackend>);
static_assert(std::is_destructible_v<LoggerBackend>, "its owner may delete a back end");
static_assert(std::is_abstract_v<LoggingChannel> && std::is_abstract_v<LoggerBackend>);

class ChannelWithoutRelease : public LoggingChannel {
    void log(LoggingLevel, const char*) override {}
};
class ChannelWithoutLog : public LoggingChannel {
    void release() override {}
};
static_assert(std::is_abstract_v<ChannelWithoutRelease> && std::is_abstract_v<ChannelWithoutLog>);

TEST_F(PluginContract, ABackendThatDeclinesEveryLoggerLeavesThemWaiting) {
    Logger* const log = logger();
    RecordingBackend& declining = makeBackend("D");
    declining.serves = [](const std::string&) {
        return false;
    };
    install(declining);

    doLog(log, LOG_LEVEL_INFO, "cached, there is no channel");
    EXPECT_TRUE(journal.empty());

    // It waits in the cache: the next installation finds a channel and delivers it.
    installBackend("A");
    EXPECT_EQ(journal, Journal{line("A", 30, "cached, there is no channel")});
}

TEST_F(PluginContract, ANullChannelMakesTheWalkGoOnWithTheNextBackend) {
    RecordingBackend& declining = makeBackend("D");
    declining.serves = [](const std::string&) {
        return false;
    };
    install(declining);
    installBackend("A");

    doLog(logger(), LOG_LEVEL_INFO, "text");

    EXPECT_EQ(journal, Journal{line("A", 30, "text")});
}

TEST_F(PluginContract, ABackendMayServeSomeLoggersAndDeclineOthers) {
    RecordingBackend& choosy = makeBackend("C");
    choosy.serves = [this](const std::string& name) {
        return name == named("yes");
    };
    install(choosy);

    doLog(logger("yes"), LOG_LEVEL_INFO, "1");
    doLog(logger("no"), LOG_LEVEL_INFO, "2");

    EXPECT_EQ(journal, Journal{line("C", 30, "1", "yes")});
}

TEST_F(PluginContract, ReleaseAndLogFollowTheChannelsDestructorInThisOrder) {
    RecordingBackend& backend = makeBackend("A");
    LoggingChannel* const channel = backend.createChannel(named("logger").c_str());
    const SlotProbe slots(channel);

    slots.at<void(LoggingChannel*)>(firstSlotAfterDestructor)(channel);
    EXPECT_EQ(backend.releases, 1);
    slots.at<void(LoggingChannel*, LoggingLevel, const char*)>(firstSlotAfterDestructor + 1)(
        channel, LOG_LEVEL_INFO, "through the slot");
    EXPECT_EQ(journal, Journal{line("A", 30, "through the slot")});
}

TEST_F(PluginContract, CreateChannelFollowsTheBackendsDestructor) {
    RecordingBackend& backend = makeBackend("A");
    const SlotProbe slots(static_cast<LoggerBackend*>(&backend));

    slots.at<LoggingChannel*(LoggerBackend*, const char*)>(firstSlotAfterDestructor)(
        &backend, named("x").c_str());

    EXPECT_EQ(asked(backend), std::vector<std::string>{"x"});
}

TEST_F(PluginContract, CopyingAndAssigningTheBasesDoesNothingButReturnTheObject) {
    RecordingBackend& a = makeBackend("A");
    RecordingBackend& b = makeBackend("B");
    LoggerBackend& left = a;
    EXPECT_EQ(&(left = b), &left);

    LoggingChannel& channel = *a.createChannel(named("a").c_str());
    LoggingChannel& other = *b.createChannel(named("b").c_str());
    EXPECT_EQ(&(channel = other), &channel);
    channel.log(LOG_LEVEL_INFO, "still the one");
    EXPECT_EQ(journal, Journal{line("A", 30, "still the one", "a")});
}

} // namespace
