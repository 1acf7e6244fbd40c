// Calls through virtual tables that no compiler made, as a plug-in of another language has them.
// Two entries precede the first slot: the offset of the object and its type.

#include <array>
#include <cstddef>
#include <string>
#include <typeinfo>

#include <gtest/gtest.h>

#include "SlotProbe.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"

using support::SlotProbe;
using namespace ZOL::Framework::GenericLogger;

namespace {

class Channel : public LoggingChannel {};
class Backend : public LoggerBackend {};

struct HandMadeObject {
    const void* const* slots;
};

constexpr std::size_t firstSlot = 2;

std::string called;

void neverCalled(void*) {
    called += "[destructor or release]";
}

void logIntoCalled(void* object, int level, const char* text) {
    called += "[log " + std::to_string(level) + " " + text + "]";
    EXPECT_NE(object, nullptr);
}

template <typename Function>
const void* address(Function* function) {
    return reinterpret_cast<const void*>(function);
}

const std::array<const void*, firstSlot + 4> channelTable = {nullptr,
                                                             &typeid(Channel),
                                                             address(neverCalled),
                                                             address(neverCalled),
                                                             address(neverCalled),
                                                             address(logIntoCalled)};
HandMadeObject channel{channelTable.data() + firstSlot};

void* createChannel(void*, const char* name) {
    called += "[createChannel " + std::string(name) + "]";
    return &channel;
}

const std::array<const void*, firstSlot + 3> backendTable = {
    nullptr, &typeid(Backend), address(neverCalled), address(neverCalled), address(createChannel)};
HandMadeObject backend{backendTable.data() + firstSlot};

TEST(Slots, ModuleCallsBackEndsAndChannelsThroughHandMadeTables) {
    called.clear();
    auto* const handMade = reinterpret_cast<LoggerBackend*>(&backend);
    Logger::installBackend(handMade);
    Logger* const logger = Logger::getLogger("slots");
    logger->info() << "text";
    Logger::uninstallBackend(handMade);
    EXPECT_EQ(called, "[createChannel slots][log 30 text]");
}

TEST(Slots, ExceptionsAnswerMessageAndWhatThroughTheirSlots) {
    try {
        Logger::installBackend(static_cast<LoggerBackend*>(nullptr));
        FAIL() << "nothing was thrown";
    } catch (const LoggerException& error) {
        using Text = const char*(const void*);
        const SlotProbe slots(&error);
        EXPECT_STREQ(slots.at<Text>(support::firstSlotAfterDestructor)(&error),
                     "Cannot install a NULL backend!");
        EXPECT_STREQ(slots.at<Text>(support::firstSlotAfterDestructor + 1)(&error), error.what());
    }
}

} // namespace
