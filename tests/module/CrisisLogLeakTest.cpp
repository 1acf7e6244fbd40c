// What a process has after it loaded the framework thousands of times and asked it for the crisis
// log: the file of the first life, which stays open, and nothing of those that were refused it.

#include <array>
#include <string>

#include <gtest/gtest.h>

#include "CrisisLogSandbox.h"
#include "ModuleClient.h"
#include "ProcessResources.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using support::CrisisLogSandbox;
using support::frameworkIsLoaded;
using support::ProcessResources;
using ZOL::Gadgets::DLL::DLLHolder;

namespace {

constexpr int rounds = ZOL_LOAD_CYCLES;
constexpr int warmUp = rounds / 10;

/// What a new life of the framework says to who asks for the crisis log; nothing if it is there.
std::string askOnce() {
    std::array<char, 100> why = {};
    {
        const DLLHolder module("CrisisModuleA", "");
        module.resolve<bool(char*, int)>("askForCrisisLog")(why.data(),
                                                            static_cast<int>(why.size()));
    }
    EXPECT_FALSE(frameworkIsLoaded());
    return why.data();
}

TEST(CrisisLogLeak, NothingGrowsOverManyLivesThatAreRefusedTheCrisisLog) {
    constexpr std::size_t heapStore = 16384; // what heap and system keep comes and goes a little
    constexpr std::size_t regionStore = 16;

    const CrisisLogSandbox place;
    const std::string refusal =
        std::string("Error opening log file: '") + CrisisLogSandbox::path + "'";
    ASSERT_EQ(askOnce(), "");
    ProcessResources before;
    for (int round = 1; round <= rounds; ++round) {
        ASSERT_EQ(askOnce(), refusal) << "in round " << round;
        if (round == warmUp) {
            before = ProcessResources::now();
        }
    }
    const ProcessResources after = ProcessResources::now();
    EXPECT_EQ(after.openHandles, before.openHandles);
    if (ProcessResources::memoryIsOurs) {
        EXPECT_LE(after.heapBytes, before.heapBytes + heapStore);
        EXPECT_LE(after.mappings, before.mappings + regionStore);
    }
}

} // namespace
