// The framework is loaded and unloaded at run time. This program is not linked with it: a module
// that is linked with it loads it, and unloads it with itself.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "Contention.h"
#include "ModuleClient.h"
#include "UnloadTrace.h"
#include "WideText.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::frameworkIsLoaded;
using support::wide;
using Client = support::ModuleClient;
using ZOL::Framework::Management::WideString;
using ZOL::Gadgets::DLL::DLLHolder;
namespace Contention = support::Contention;
namespace UnloadTrace = support::UnloadTrace;

namespace {

// Longer than the small-string buffer, so that each key is a separate block.
constexpr const char* longName = "a name that is longer than a short string";

std::string* theObject = nullptr;

void* makeObject() {
    theObject = new std::string("the object of a long name, on the heap");
    return theObject;
}

void* factoryThatWaits() {
    Contention::waitInside();
    static int object = 0;
    return &object;
}

TEST(ModuleUnload, UnloadingWithNoServiceUsedFreesOnlyLocks) {
    {
        const Client client;
        ASSERT_TRUE(frameworkIsLoaded());
        UnloadTrace::attach();
        UnloadTrace::forget();
        UnloadTrace::tag("any");
        UnloadTrace::start();
    }
    UnloadTrace::tag(nullptr);
    const std::vector<std::string> freed = UnloadTrace::stop();

    EXPECT_FALSE(frameworkIsLoaded());
    const std::size_t locks = UnloadTrace::everyLockHasAResource ? 4 : 0;
    EXPECT_EQ(freed, std::vector<std::string>(locks, "lock"));
}

/// The events without sizes and without repetitions in a row. A counter has the size of its number,
/// which no part of its table has.
std::vector<std::string> withoutRepetitions(const std::vector<std::string>& events) {
    std::vector<std::string> result;
    for (const std::string& event : events) {
        const std::string what =
            event == "counters 4" ? "counters" : event.substr(0, event.find(' '));
        const std::string kind =
            event != "counters 4" && what == "counters" ? "counter table" : what;
        if (result.empty() || result.back() != kind) {
            result.push_back(kind);
        }
    }
    return result;
}

TEST(ModuleUnload, DestroysInReverseOrderAndLeavesLoggersAndObjects) {
    const char* const loggerBlocks = "loggers";
    const WideString propertyName = wide(longName);
    const WideString propertyValue = wide("a value that is longer than a short string");
    {
        const Client client;
        static const Client* used = nullptr;
        used = &client;
        UnloadTrace::attach();
        UnloadTrace::forget();

        // The first in use, and nevertheless the first destroyed.
        UnloadTrace::tag("properties");
        client.properties()->setProperty(propertyName, propertyValue);
        UnloadTrace::tag("counters");
        client.nextOf(longName);
        client.nextOf("another name that is longer than a short string");
        UnloadTrace::tag(loggerBlocks);
        client.makeLogger(longName);
        client.logTo(longName, "a cached message that is longer than a short string");
        UnloadTrace::tag(nullptr);
        makeObject();
        UnloadTrace::tag("objects");
        client.objectOf(longName, [] { return static_cast<void*>(theObject); });
        UnloadTrace::tag("backends");
        client.install();
        UnloadTrace::tag(nullptr);

        constexpr std::chrono::milliseconds surelyWaiting(200);
        client.callOnLog(Contention::waitInside);
        Contention::make([] { used->logTo(longName, "held"); }, [] { used->makeLogger("waits"); },
                         surelyWaiting);
        client.callOnLog(nullptr);
        Contention::make([] { used->objectOf("held", factoryThatWaits); },
                         [] { used->knownObject("waits"); }, surelyWaiting);

        UnloadTrace::start();
    }
    const std::vector<std::string> freed = UnloadTrace::stop();

    ASSERT_FALSE(frameworkIsLoaded());
    if (UnloadTrace::everyLockHasAResource) {
        EXPECT_EQ(
            withoutRepetitions(freed),
            (std::vector<std::string>{"properties", "lock", "objects", "lock", "backends", "lock",
                                      "loggers", "lock", "counters", "counter table"}));
    } else {
        EXPECT_EQ(withoutRepetitions(freed),
                  (std::vector<std::string>{"properties", "lock", "objects", "backends", "lock",
                                            "loggers", "counters", "counter table"}));
    }

    // Of the logger, its entry in the table is freed, and its key where that is visible. The
    // object, its private block, the cache's storage and its name remain.
    EXPECT_EQ(
        std::count_if(freed.begin(), freed.end(),
                      [](const std::string& event) { return event.rfind("loggers", 0) == 0; }),
        UnloadTrace::seesStrings ? 2 : 1);
    EXPECT_GE(UnloadTrace::alive(loggerBlocks), UnloadTrace::seesStrings ? 4U : 3U);
    EXPECT_EQ(*theObject, "the object of a long name, on the heap");
    delete theObject;
}

TEST(ModuleUnload, IsNotUnloadedWhileOneOfTwoClientsHoldsIt) {
    const Client first;
    first.nextOf("kept");
    {
        const DLLHolder second("ModuleA", "");
        second.resolve<void(const char*, const char*)>("logFromA")("kept", "text");
    }
    EXPECT_TRUE(frameworkIsLoaded());
    EXPECT_EQ(first.nextOf("kept"), 1);
}

TEST(ModuleUnload, AThreadMayEndBeforeAndAfterTheUnload) {
    std::atomic<bool> used = false;
    std::atomic<bool> unloaded = false;
    std::thread thread;
    {
        const Client client;
        std::thread([&] { client.logTo("short-lived thread", "text"); }).join();
        thread = std::thread([&] {
            client.logTo("long-lived thread", "text");
            client.drawn();
            used = true;
            while (!unloaded) {
                std::this_thread::yield();
            }
        });
        while (!used) {
            std::this_thread::yield();
        }
    }
    EXPECT_FALSE(frameworkIsLoaded());
    unloaded = true;
    thread.join();
}

} // namespace
