// The framework as a library that comes and goes at run time. This program is not linked with it:
// it is loaded by a module that is, and unloaded with it.

#include <algorithm>
#include <atomic>
#include <chrono>
#include <string>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "LoadedModule.h"
#include "UnloadTrace.h"
#include "WideText.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::wide;
using ZOL::Framework::Management::PropertyManager;
using ZOL::Framework::Management::WideString;
using ZOL::Gadgets::DLL::DLLHolder;
namespace UnloadTrace = support::UnloadTrace;

namespace {

bool frameworkIsLoaded() {
    return support::isLoaded("ZOL_Framework", "2.0.8.129");
}

/// The module that brings the framework along.
class Client {
public:
    DLLHolder holder{"LifeClient", ""};

    int (*nextOf)(const char*) = holder.resolve<int(const char*)>("nextOf");
    void* (*objectOf)(const char*,
                      void* (*)()) = holder.resolve<void*(const char*, void* (*)())>("objectOf");
    void* (*knownObject)(const char*) = holder.resolve<void*(const char*)>("knownObject");
    void (*makeLogger)(const char*) = holder.resolve<void(const char*)>("makeLogger");
    void (*logTo)(const char*,
                  const char*) = holder.resolve<void(const char*, const char*)>("logTo");
    void (*install)() = holder.resolve<void()>("install");
    void (*callOnLog)(void (*)()) = holder.resolve<void(void (*)())>("callOnLog");
    int (*drawn)() = holder.resolve<int()>("drawn");
    PropertyManager* (*properties)() = holder.resolve<PropertyManager*()>("properties");
    bool (*failsToRead)(const WideString*) = holder.resolve<bool(const WideString*)>("failsToRead");
    bool (*join)(const char*, const char*,
                 const char*) = holder.resolve<bool(const char*, const char*, const char*)>("join");
};

// Longer than what a string holds within itself, so that each key is a block of its own.
constexpr const char* longName = "a name that is longer than a short string";

std::string* theObject = nullptr;

void* makeObject() {
    theObject = new std::string("the object of a long name, on the heap");
    return theObject;
}

std::atomic<bool> entered = false;
std::atomic<bool> leave = false;

void waitInside() {
    entered = true;
    while (!leave) {
        std::this_thread::yield();
    }
}

/// Lets one thread wait for the lock that another holds inside the module, so that the lock gets
/// its system resource where it has none from the start.
template <typename Holder, typename Waiter>
void contend(Holder holder, Waiter waiter) {
    entered = false;
    leave = false;
    std::thread first(holder);
    while (!entered) {
        std::this_thread::yield();
    }
    std::thread second(waiter);
    std::this_thread::sleep_for(std::chrono::milliseconds(200));
    leave = true;
    first.join();
    second.join();
}

void* factoryThatWaits() {
    waitInside();
    static int object = 0;
    return &object;
}

TEST(ModuleLife, UnloadingWithNoServiceUsedGivesBackNothingButLocks) {
    {
        const Client client;
        ASSERT_TRUE(frameworkIsLoaded());
        UnloadTrace::attach();
        UnloadTrace::forget();
        UnloadTrace::tag("any");
        UnloadTrace::start();
    }
    UnloadTrace::tag(nullptr);
    const std::vector<std::string> givenBack = UnloadTrace::stop();

    EXPECT_FALSE(frameworkIsLoaded());
    const std::size_t locks = UnloadTrace::everyLockHasAResource ? 4 : 0;
    EXPECT_EQ(givenBack, std::vector<std::string>(locks, "lock"));
}

/// What was given back, without sizes and with repetitions in a row told once. A counter has the
/// size of its number, which no part of its table has.
std::vector<std::string> inShort(const std::vector<std::string>& events) {
    std::vector<std::string> result;
    for (const std::string& event : events) {
        const std::string what =
            event == "counters 4" ? "counters" : event.substr(0, event.find(' '));
        const std::string told =
            event != "counters 4" && what == "counters" ? "counter table" : what;
        if (result.empty() || result.back() != told) {
            result.push_back(told);
        }
    }
    return result;
}

TEST(ModuleLife, CleansUpInReverseLoadOrderAndLeavesLoggersAndObjectsAlone) {
    const char* const loggerBlocks = "loggers";
    const WideString propertyName = wide(longName);
    const WideString propertyValue = wide("a value that is longer than a short string");
    {
        const Client client;
        static const Client* used = nullptr;
        used = &client;
        UnloadTrace::attach();
        UnloadTrace::forget();

        // The first in use, and the first to go all the same.
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

        client.callOnLog(waitInside);
        contend([] { used->logTo(longName, "held"); }, [] { used->makeLogger("waits"); });
        client.callOnLog(nullptr);
        contend([] { used->objectOf("held", factoryThatWaits); },
                [] { used->knownObject("waits"); });

        UnloadTrace::start();
    }
    const std::vector<std::string> givenBack = UnloadTrace::stop();

    ASSERT_FALSE(frameworkIsLoaded());
    if (UnloadTrace::everyLockHasAResource) {
        EXPECT_EQ(inShort(givenBack), (std::vector<std::string>{
                                          "properties", "lock", "objects", "lock", "backends",
                                          "lock", "loggers", "lock", "counters", "counter table"}));
    } else {
        EXPECT_EQ(inShort(givenBack),
                  (std::vector<std::string>{"properties", "lock", "objects", "backends", "lock",
                                            "loggers", "counters", "counter table"}));
    }

    // Of the logger, its entry in the table went, and its key where that is in sight. All else
    // stayed: the object, its private block, the cache's storage, and its name.
    EXPECT_EQ(
        std::count_if(givenBack.begin(), givenBack.end(),
                      [](const std::string& event) { return event.rfind("loggers", 0) == 0; }),
        UnloadTrace::seesStrings ? 2 : 1);
    EXPECT_GE(UnloadTrace::alive(loggerBlocks), UnloadTrace::seesStrings ? 4U : 3U);
    EXPECT_EQ(*theObject, "the object of a long name, on the heap");
    delete theObject;
}

TEST(ModuleLife, LoadsAndUnloadsAThousandTimesAndStartsAfreshEachTime) {
    const char* const everything = "everything";
    const WideString property = wide(longName);
    for (int round = 0; round < 1000; ++round) {
        {
            const Client client;
            ASSERT_TRUE(frameworkIsLoaded());
            UnloadTrace::attach();
            UnloadTrace::tag(everything); // keeps what stays behind by design in sight
            ASSERT_EQ(client.nextOf("counter"), 0) << "round " << round;
            ASSERT_EQ(client.nextOf("counter"), 1);
            ASSERT_EQ(client.knownObject("object"), nullptr) << "round " << round;
            static int object = 0;
            ASSERT_EQ(client.objectOf("object", [] { return static_cast<void*>(&object); }),
                      &object);
            client.logTo("logger", "cached and flushed");
            client.install();
            client.logTo("logger", "live");
            ASSERT_FALSE(client.properties()->hasProperty(property)) << "round " << round;
            ASSERT_TRUE(client.failsToRead(&property)) << "round " << round;
            client.properties()->setProperty(property, property);
            ASSERT_EQ(client.properties()->readProperty(property), property);
            ASSERT_TRUE(client.join("a name", longName + 6, longName));
            int drawn = 0;
            std::thread([&] { drawn = client.drawn(); }).join();
            ASSERT_EQ(drawn, 41) << "the count of calls starts at 0, round " << round;
            UnloadTrace::tag(nullptr);
        }
        ASSERT_FALSE(frameworkIsLoaded()) << "round " << round;
    }
}

TEST(ModuleLife, StaysWhileOneOfTwoClientsHoldsIt) {
    const Client first;
    first.nextOf("kept");
    {
        const DLLHolder second("ModuleA", "");
        second.resolve<void(const char*, const char*)>("logFromA")("kept", "text");
    }
    EXPECT_TRUE(frameworkIsLoaded());
    EXPECT_EQ(first.nextOf("kept"), 1);
}

TEST(ModuleLife, AThreadMayEndWhileTheFrameworkIsThereAndAfterItHasGone) {
    std::atomic<bool> used = false;
    std::atomic<bool> gone = false;
    std::thread thread;
    {
        const Client client;
        std::thread([&] { client.logTo("short-lived thread", "text"); }).join();
        thread = std::thread([&] {
            client.logTo("long-lived thread", "text");
            client.drawn();
            used = true;
            while (!gone) {
                std::this_thread::yield();
            }
        });
        while (!used) {
            std::this_thread::yield();
        }
    }
    EXPECT_FALSE(frameworkIsLoaded());
    gone = true;
    thread.join();
}

} // namespace
