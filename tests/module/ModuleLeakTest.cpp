// What a process has after it loaded, used and unloaded the framework thousands of times: no more
// than after the first few.

#include <chrono>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "Contention.h"
#include "ModuleClient.h"
#include "ProcessResources.h"
#include "UnloadTrace.h"
#include "WideText.h"

using support::frameworkIsLoaded;
using support::ModuleClient;
using support::ProcessResources;
using support::wide;
using ZOL::Framework::Management::WideString;
namespace Contention = support::Contention;
namespace UnloadTrace = support::UnloadTrace;

namespace {

constexpr int rounds = ZOL_LOAD_CYCLES;
constexpr int warmUp = rounds / 10; // rounds until the heap and the loader have all that they keep
constexpr int roundsPerMeetingOfThreads = 50; // they take their time

// Longer than what a string holds within itself, so that each copy is a block of its own. What is
// left behind has short texts: on Windows, blocks of strings could not be given back.
constexpr const char* longText = "a text that is longer than a short string";

const WideString property = wide(longText);

constexpr const char* ofLoggers = "loggers";
constexpr const char* ofOthers = "others";

// The object, its private block, and the storage of its cache and of its channels.
constexpr std::size_t blocksThatALoggerLeaves = 4;

void useLoggers(const ModuleClient& client) {
    constexpr int oneTooMany = 102;
    for (int message = 0; message < oneTooMany; ++message) {
        client.logTo("overflows", "waits");
    }
    client.logTo("left", "waits");
    client.install();
    client.logTo("overflows", "live");
    client.logTo("left", "live");
    EXPECT_TRUE(client.refusesNoBackend());
    client.uninstall();
    client.logTo("left", "never delivered");
}

void useOthers(const ModuleClient& client) {
    EXPECT_EQ(client.nextOf(longText), 0);
    EXPECT_EQ(client.nextOf(longText), 1);

    static int object = 0;
    EXPECT_EQ(client.knownObject(longText), nullptr);
    EXPECT_EQ(client.objectOf(longText, [] { return static_cast<void*>(&object); }), &object);
    EXPECT_EQ(client.knownObject(longText), &object);

    EXPECT_FALSE(client.properties()->hasProperty(property));
    EXPECT_TRUE(client.failsToRead(&property));
    client.properties()->setProperty(property, property);
    EXPECT_EQ(client.properties()->readProperty(property), property);

    EXPECT_TRUE(client.join("a text", longText + 6, longText));
    EXPECT_TRUE(client.resize());

    int drawn = 0;
    std::thread([&] { drawn = client.drawn(); }).join();
    EXPECT_EQ(drawn, 41) << "the count of calls starts at 0";
}

void* factoryThatWaits() {
    Contention::waitInside();
    static int object = 0;
    return &object;
}

/// Gives the locks the system resources that some of them have only from then on.
void useLocksAtOnce(const ModuleClient& client) {
    constexpr std::chrono::milliseconds length(5);
    client.install();
    client.callOnLog(Contention::waitInside);
    Contention::make([&] { client.logTo("left", "held"); }, [&] { client.makeLogger("left"); },
                     length);
    client.callOnLog(nullptr);
    client.uninstall();
    Contention::make([&] { client.objectOf("held", factoryThatWaits); },
                     [&] { client.knownObject("waits"); }, length);
}

/// One life of the framework. What it leaves behind by design is given back, and nothing else.
void liveOnce(bool withLocksAtOnce) {
    UnloadTrace::forget();
    {
        const ModuleClient client;
        EXPECT_TRUE(frameworkIsLoaded());
        UnloadTrace::attach();
        UnloadTrace::tag(ofLoggers);
        useLoggers(client);
        UnloadTrace::tag(ofOthers);
        useOthers(client);
        UnloadTrace::tag(nullptr);
        if (withLocksAtOnce) {
            useLocksAtOnce(client);
        }
        UnloadTrace::tag(ofOthers);
    }
    UnloadTrace::tag(nullptr);
    EXPECT_FALSE(frameworkIsLoaded());
    EXPECT_EQ(UnloadTrace::alive(ofOthers), 0U);
    EXPECT_EQ(UnloadTrace::alive(ofLoggers), 2 * blocksThatALoggerLeaves);
    UnloadTrace::giveBack(ofLoggers);
}

TEST(ModuleLeak, NothingGrowsOverManyLivesThatUseEverything) {
    // What heap and system keep in store comes and goes a little. One block, or one region, for
    // each life would be a multiple of this.
    constexpr std::size_t heapStore = 16384;
    constexpr std::size_t regionStore = 16;
    constexpr std::size_t residentStore = 1048576;

    ProcessResources before;
    for (int round = 1; round <= rounds; ++round) {
        liveOnce(round % roundsPerMeetingOfThreads == 1);
        ASSERT_FALSE(HasFailure()) << "in round " << round;
        if (round == warmUp) {
            before = ProcessResources::now();
        }
    }
    const ProcessResources after = ProcessResources::now();
    EXPECT_EQ(after.openHandles, before.openHandles);
    if (ProcessResources::memoryIsOurs) {
        EXPECT_LE(after.heapBytes, before.heapBytes + heapStore);
        EXPECT_LE(after.mappings, before.mappings + regionStore);
        EXPECT_LE(after.residentBytes, before.residentBytes + residentStore);
    }
}

} // namespace
