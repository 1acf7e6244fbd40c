// Loading the framework and requesting the crisis log thousands of times leaks nothing but the
// first load's file, which stays open by design; the later loads are refused.

#include <array>
#include <string>

#include <gtest/gtest.h>

#include "CrisisLogSandbox.h"
#include "LoaderGrowth.h"
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

/// Loads the framework and requests the crisis log. The message of the refusal; empty if it
/// succeeds.
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

TEST(CrisisLogLeak, NothingGrowsOverManyLoadsThatAreRefusedTheCrisisLog) {
    constexpr std::size_t heapReserve = 16384; // heap and system keep a varying reserve
    constexpr std::size_t regionReserve = 16;

    const CrisisLogSandbox place;
    const std::string refusal =
        std::string("Error opening log file: '") + CrisisLogSandbox::path + "'";
    ASSERT_EQ(askOnce(), "");
    const std::size_t ofTheLoader = 2 * loaderGrowth(loadsToCompare(rounds));
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
        EXPECT_LE(after.heapBytes, before.heapBytes + heapReserve + ofTheLoader);
        EXPECT_LE(after.mappings, before.mappings + regionReserve);
    }
}

} // namespace
