// Loading, using and unloading the framework thousands of times leaks nothing.

#include <chrono>
#include <clocale>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "Contention.h"
#include "LoaderGrowth.h"
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
constexpr int warmUp = rounds / 10;     // rounds until heap and loader have reached their size
constexpr int roundsPerContention = 50; // it is slow

// Longer than the small-string buffer, so that each copy is a separate block. What is leaked by
// design has short texts: on Windows, blocks of strings could not be freed here.
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

/// Makes two threads contend for each lock: some locks allocate system resources only then.
void contendForLocks(const ModuleClient& client) {
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

/// One load and unload of the framework. Frees what it leaks by design, and nothing else.
void loadAndUnload(bool withContention) {
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
        if (withContention) {
            contendForLocks(client);
        }
        UnloadTrace::tag(ofOthers);
    }
    UnloadTrace::tag(nullptr);
    EXPECT_FALSE(frameworkIsLoaded());
    EXPECT_EQ(UnloadTrace::alive(ofOthers), 0U);
    EXPECT_EQ(UnloadTrace::alive(ofLoggers), 2 * blocksThatALoggerLeaves);
    UnloadTrace::freeBlocks(ofLoggers);
}

/// What the standard library keeps of each load: the locale "C" that LLVM's creates on Windows,
/// once for each module that it is linked into, is never freed.
std::size_t heapBytesOfStandardLibrary() {
#if defined(_LIBCPP_VERSION) && defined(_WIN32)
    const std::size_t before = ProcessResources::now().heapBytes;
    const _locale_t created = _create_locale(LC_ALL, "C");
    const std::size_t bytes = ProcessResources::now().heapBytes - before;
    _free_locale(created);
    return bytes;
#else
    return 0;
#endif
}

TEST(ModuleLeak, NothingGrowsOverManyLoadsThatUseEveryService) {
    // Heap and system keep a varying reserve. One leaked block or region per load would be a
    // multiple of this.
    constexpr std::size_t heapReserve = 16384;
    constexpr std::size_t regionReserve = 16;
    constexpr std::size_t residentReserve = 1048576;

    const std::size_t ofTheLoader = 2 * loaderGrowth(loadsToCompare(rounds));
    const std::size_t ofStandardLibrary = (rounds - warmUp) * heapBytesOfStandardLibrary();
    ProcessResources before;
    for (int round = 1; round <= rounds; ++round) {
        loadAndUnload(round % roundsPerContention == 1);
        ASSERT_FALSE(HasFailure()) << "in round " << round;
        if (round == warmUp) {
            before = ProcessResources::now();
        }
    }
    const ProcessResources after = ProcessResources::now();
    EXPECT_EQ(after.openHandles, before.openHandles);
    if (ProcessResources::memoryIsOurs) {
        EXPECT_LE(after.heapBytes,
                  before.heapBytes + heapReserve + ofTheLoader + ofStandardLibrary);
        EXPECT_LE(after.mappings, before.mappings + regionReserve);
        EXPECT_LE(after.residentBytes,
                  before.residentBytes + residentReserve + 2 * ofStandardLibrary);
    }
}

} // namespace
