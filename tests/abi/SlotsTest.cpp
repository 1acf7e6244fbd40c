// The tables of virtual operations, seen from a client that was compiled apart from the module, and
// from the module when it meets tables that no compiler made.

#include <array>
#include <cstddef>
#include <cstring>
#include <map>
#include <new>
#include <string>
#include <typeinfo>
#include <vector>

#include <gtest/gtest.h>

#include "Golden.h"
#include "ModuleSurface.h"
#include "SlotProbe.h"

#include "ZOL/Framework/Exceptions/FrameworkException.h"
#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Framework/Management/PropertyManager.h"

using boundary::expectGolden;
using boundary::readable;
using support::SlotProbe;
using ZOL::Framework::Exceptions::FrameworkException;
using ZOL::Framework::Management::PropertyManager;
using ZOL::Framework::Management::WideString;
using namespace ZOL::Framework::GenericLogger;

namespace {

/// The slot of a virtual operation: this ABI's pointer to a member holds its distance in the table,
/// plus one.
template <typename Member>
std::size_t slotOf(Member member) {
    std::array<std::size_t, 2> parts{};
    static_assert(sizeof(member) == sizeof(parts));
    std::memcpy(parts.data(), &member, sizeof(parts));
    EXPECT_EQ(parts[0] % 2, 1U) << "not virtual";
    return (parts[0] - 1) / sizeof(void*);
}

/// How many slots the class has: what a derived class adds comes behind them.
template <typename Contract>
std::size_t slotCount() {
    class Extended : public Contract {
    public:
        using Contract::Contract;
        virtual void added() = 0;
    };
    return slotOf(&Extended::added);
}

int destroyed = 0;
int deleted = 0;

/// Counts what its destructor's slots do.
template <typename Implemented>
class Mortal final : public Implemented {
public:
    using Implemented::Implemented;
    ~Mortal() override { ++destroyed; }
    static void operator delete(void*) { ++deleted; }
};

template <typename Implemented, typename... Arguments>
std::string destructorIn(std::size_t slot, Arguments... arguments) {
    alignas(Mortal<Implemented>) std::array<std::byte, sizeof(Mortal<Implemented>)> storage{};
    auto* const object = new (storage.data()) Mortal<Implemented>(arguments...);
    destroyed = 0;
    deleted = 0;
    SlotProbe(object).at<void(void*)>(slot)(object);
    if (destroyed != 1) {
        return "not the destructor";
    }
    return deleted == 0 ? "destructor, complete object" : "destructor, deleting";
}

/// A line for each slot: the destructor's two by what they do, the others by name.
template <typename Contract, typename Implemented, typename... Arguments>
std::vector<std::string> slotsOf(const std::map<std::size_t, const char*>& operations,
                                 Arguments... arguments) {
    std::vector<std::string> lines;
    for (std::size_t slot = 0; slot < slotCount<Contract>(); ++slot) {
        std::string what = "an operation that has no name here";
        if (const auto named = operations.find(slot); named != operations.end()) {
            what = named->second;
        } else if (slot < support::firstSlotBehindDestructor) {
            what = destructorIn<Implemented>(slot, arguments...);
        }
        lines.push_back(readable(typeid(Contract).name()) + " slot " + std::to_string(slot) + ": " +
                        what);
    }
    return lines;
}

class Channel : public LoggingChannel {
public:
    void release() override {}
    void log(LoggingLevel, const char*) override {}
};

class Backend : public LoggerBackend {
public:
    LoggingChannel* createChannel(const char*) override { return nullptr; }
};

class Store : public PropertyManager {
public:
    const WideString& readProperty(const WideString& name) const override { return name; }
    bool hasProperty(const WideString&) const override { return false; }
    void setProperty(const WideString&, const WideString&) override {}
    void clearProperty(const WideString&) override {}
};

TEST(Slots, OfTheContractsAreThoseOfTheStoredList) {
    std::vector<std::string> lines;
    const auto add = [&lines](const std::vector<std::string>& more) {
        lines.insert(lines.end(), more.begin(), more.end());
    };
    add(slotsOf<FrameworkException, FrameworkException>({}));
    add(slotsOf<LoggingChannel, Channel>(
        {{slotOf(&LoggingChannel::release), "release"}, {slotOf(&LoggingChannel::log), "log"}}));
    add(slotsOf<LoggerBackend, Backend>(
        {{slotOf(&LoggerBackend::createChannel), "createChannel"}}));
    add(slotsOf<LoggerException, LoggerException>(
        {{slotOf(&LoggerException::message), "message"}, {slotOf(&LoggerException::what), "what"}},
        "file", 1));
    add(slotsOf<LoggerBackendLoadError, LoggerBackendLoadError>(
        {{slotOf(&LoggerBackendLoadError::message), "message"},
         {slotOf(&LoggerBackendLoadError::what), "what"}},
        "message", "file", 1));
    add(slotsOf<PropertyManager, Store>(
        {{slotOf(&PropertyManager::readProperty), "readProperty"},
         {slotOf(&PropertyManager::hasProperty), "hasProperty"},
         {slotOf(&PropertyManager::setProperty), "setProperty"},
         {slotOf(&PropertyManager::clearProperty), "clearProperty"}}));
    expectGolden("slots.txt", lines);
}

// Tables written by hand, as a plug-in of another language would bring them. Two entries that are
// no slots stand before the first: where the object begins, and its class, for whoever asks.

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

TEST(Slots, AreWhereTheModuleCallsBackEndsAndChannels) {
    called.clear();
    auto* const handMade = reinterpret_cast<LoggerBackend*>(&backend);
    Logger::installBackend(handMade);
    Logger* const logger = Logger::getLogger("slots");
    logger->info() << "text";
    Logger::uninstallBackend(handMade);
    EXPECT_EQ(called, "[createChannel slots][log 30 text]");
}

TEST(Slots, AreWhereTheModulesExceptionsTellTheirMessageAndText) {
    try {
        Logger::installBackend(static_cast<LoggerBackend*>(nullptr));
        FAIL() << "nothing was thrown";
    } catch (const LoggerException& error) {
        using Text = const char*(const void*);
        const SlotProbe slots(&error);
        EXPECT_STREQ(slots.at<Text>(support::firstSlotBehindDestructor)(&error),
                     "Cannot install a NULL backend!");
        EXPECT_STREQ(slots.at<Text>(support::firstSlotBehindDestructor + 1)(&error), error.what());
    }
}

} // namespace
