// Two threads load and unload modules concurrently. The first to load a module loads the framework,
// the last to unload one unloads it.

#include <algorithm>
#include <atomic>
#include <memory>
#include <mutex>
#include <string>
#include <thread>

#include <gtest/gtest.h>

#include "ExceptionsMeetLoads.h"
#include "ModuleClient.h"
#include "WideText.h"

using support::frameworkIsLoaded;
using support::ModuleClient;
using support::wide;
using ZOL::Framework::Management::WideString;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

constexpr int rounds = std::min(ZOL_LOAD_CYCLES, 3000);
constexpr int messages = 20; // enough for both to log at the same time

int object = 0;
const WideString property = wide("a property with a long name, on the heap");

// Counters and properties have no lock, so their users need one.
std::mutex turns;

std::atomic<int> loads = 0;    // uses that found the framework just loaded
std::atomic<int> meetings = 0; // uses that found it in use

/// The number of failed expectations: gtest's own checks would serialize the threads.
std::atomic<int> failures = 0;

void expect(bool asExpected) {
    failures += asExpected ? 0 : 1;
}

#if defined(__SANITIZE_THREAD__)
// The loader's own lock serializes loads and unloads, but the thread sanitizer does not see it.
// This one makes the order visible.
std::mutex loader;

std::unique_lock<std::mutex> loaderTurn() {
    return std::unique_lock<std::mutex>(loader);
}
#else
int loaderTurn() {
    return 0;
}
#endif

/// Keeps a module loaded during its lifetime.
template <typename Module>
class Loaded {
public:
    template <typename... Arguments>
    explicit Loaded(const Arguments&... arguments) {
        [[maybe_unused]] const auto turn = loaderTurn();
        module_ = std::make_unique<Module>(arguments...);
    }
    Loaded(const Loaded&) = delete;
    Loaded& operator=(const Loaded&) = delete;
    ~Loaded() {
        [[maybe_unused]] const auto turn = loaderTurn();
        module_.reset();
    }

    const Module& operator*() const { return *module_; }

private:
    std::unique_ptr<Module> module_;
};

void useModuleClient() {
    const Loaded<ModuleClient> loaded;
    const ModuleClient& client = *loaded;
    for (int message = 0; message < messages; ++message) {
        client.logTo("logger", "a message that is longer than a short string");
    }
    if (support::exceptionsMayMeetLoads()) {
        expect(client.refusesNoBackend());
    }
    expect(client.objectOf("object", [] { return static_cast<void*>(&object); }) == &object);
    expect(client.knownObject("object") == &object);
    expect(client.join("a", "b", "ab"));
    expect(client.resize());
    client.drawn();
    const std::lock_guard<std::mutex> turn(turns);
    const int number = client.nextOf("counter");
    (number == 0 ? loads : meetings)++;
    expect(number >= 0 && client.nextOf("counter") == number + 1);
    client.properties()->setProperty(property, property);
    expect(client.properties()->readProperty(property) == property);
}

void useModuleA() {
    const Loaded<DLLHolder> loaded("ModuleA", "");
    const DLLHolder& module = *loaded;
    const auto log = module.resolve<void(const char*, const char*)>("logFromA");
    for (int message = 0; message < messages; ++message) {
        log("logger", "a message");
    }
    module.resolve<void(const char*, int)>("setMinimumFromA")("logger", 10);
    void* const block = module.resolve<void*(std::size_t)>("blockFromA")(100);
    module.resolve<void(void*)>("freeInA")(block);
    const std::lock_guard<std::mutex> turn(turns);
    const auto next = module.resolve<int(const char*)>("nextFromA");
    const int number = next("counter");
    (number == 0 ? loads : meetings)++;
    expect(number >= 0 && next("counter") == number + 1);
    module.resolve<void(const WideString*, const WideString*)>("setPropertyFromA")(&property,
                                                                                   &property);
}

template <typename First, typename Second>
void runAtOnce(First first, Second second) {
    failures = 0;
    loads = 0;
    meetings = 0;
    std::atomic<int> there = 0;
    const auto run = [&](auto use) {
        ++there;
        while (there < 2) {
            std::this_thread::yield();
        }
        for (int round = 0; round < rounds; ++round) {
            use();
        }
    };
    std::thread other(run, second);
    run(first);
    other.join();
    EXPECT_EQ(failures, 0);
    EXPECT_EQ(loads + meetings, 2 * rounds);
    EXPECT_GT(loads, 1) << "the framework was never unloaded";
    EXPECT_GT(meetings, 0) << "the threads never met";
}

void expectAFreshStart() {
    EXPECT_FALSE(frameworkIsLoaded());
    const ModuleClient client;
    EXPECT_EQ(client.nextOf("counter"), 0);
    EXPECT_EQ(client.knownObject("object"), nullptr);
    EXPECT_FALSE(client.properties()->hasProperty(property));
    int drawn = 0;
    std::thread([&] { drawn = client.drawn(); }).join();
    EXPECT_EQ(drawn, 41);
}

TEST(ModuleTwoLoaders, OfTheSameModuleEachFindTheServicesAndLeaveNothingLoaded) {
    runAtOnce(useModuleClient, useModuleClient);
    expectAFreshStart();
}

TEST(ModuleTwoLoaders, OfTwoModulesEachFindTheServicesAndLeaveNothingLoaded) {
    runAtOnce(useModuleClient, useModuleA);
    expectAFreshStart();
}

} // namespace
