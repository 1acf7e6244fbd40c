// Tests that interpose the clock, which only Linux allows.

#include <cstdint>
#include <thread>

#include <sys/wait.h>
#include <unistd.h>

#include <gtest/gtest.h>

#include "LoadedModule.h"
#include "MsvcrtRand.h"
#include "TestClock.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::MsvcrtRand;
using support::TestClock::FixedNanosecond;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

struct Seeding {
    long nanosecond;
    std::uint32_t seed;
};

TEST(LinuxModule, SeedsTheRandomNumbersWithTheTruncatedMillisecondsOfTheClock) {
    for (const auto [nanosecond, seed] :
         {Seeding{0, 0}, Seeding{999999, 0}, Seeding{1000000, 1}, Seeding{123456789, 123},
          Seeding{500999999, 500}, Seeding{999999999, 999}}) {
        const FixedNanosecond clock(nanosecond);
        const DLLHolder client("ModuleClient", "");
        int (*const drawn)() = client.resolve<int()>("drawn");
        MsvcrtRand msvcrt(seed);
        for (std::uint32_t call = 0; call < 5; ++call) {
            const std::uint32_t expected = msvcrt.next() + call;
            EXPECT_EQ(drawn(), static_cast<int>(expected)) << "at nanosecond " << nanosecond;
        }
    }
}

TEST(LinuxModule, SeedsTheThreadThatLoadsItAndNoOther) {
    int ofLoader = 0;
    int ofOther = 0;
    std::thread([&] {
        const FixedNanosecond clock(777000000);
        const DLLHolder client("ModuleClient", "");
        int (*const drawn)() = client.resolve<int()>("drawn");
        ofLoader = drawn();
        std::thread([&] { ofOther = drawn(); }).join();
    }).join();
    EXPECT_EQ(ofLoader, static_cast<int>(MsvcrtRand(777).next()));
    EXPECT_EQ(ofOther, 41 + 1);
}

TEST(LinuxModule, ReadsTheClockForItsSeedAtTheLoadAlone) {
    const DLLHolder client("ModuleClient", "");
    int (*const drawn)() = client.resolve<int()>("drawn");
    int first = 0;
    std::thread([&] {
        const FixedNanosecond clock(777000000);
        first = drawn();
    }).join();
    EXPECT_EQ(first, 41);
}

TEST(LinuxModule, AForkAfterTheUnloadCallsNothingOfTheModule) {
    {
        const DLLHolder client("ModuleClient", "");
        client.resolve<int()>("drawn")();
    }
    ASSERT_FALSE(support::isLoaded("ModuleClient", ""));
    const pid_t child = fork();
    if (child == 0) {
        _exit(0);
    }
    int status = -1;
    ASSERT_EQ(waitpid(child, &status, 0), child);
    EXPECT_EQ(status, 0);
}

} // namespace
