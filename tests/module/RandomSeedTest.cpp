// The seed of the random numbers when the framework is loaded.

#include <chrono>
#include <cstdint>
#include <thread>
#include <vector>

#include <gtest/gtest.h>

#include "MsvcrtRand.h"

#include "ZOL/Gadgets/DLL/DLLHolder.h"

using ZOL::Gadgets::DLL::DLLHolder;

namespace {

std::int64_t millisecondsNow() {
    using namespace std::chrono;
    return duration_cast<milliseconds>(system_clock::now().time_since_epoch()).count();
}

/// The seeds whose first random number is this one.
std::vector<int> seedsOf(std::uint32_t number) {
    std::vector<int> seeds;
    for (int seed = 0; seed < 1000; ++seed) {
        if (support::MsvcrtRand(static_cast<std::uint32_t>(seed)).next() == number) {
            seeds.push_back(seed);
        }
    }
    return seeds;
}

TEST(RandomSeed, IsTheMillisecondInWhichTheFrameworkIsLoaded) {
    constexpr std::int64_t clocksApart = 20; // between two clock functions, at worst
    for (int load = 0; load < 8; ++load) {
        // At many points of the second, and in direct succession.
        std::this_thread::sleep_for(std::chrono::milliseconds(load % 2 == 0 ? 137 : 0));
        const std::int64_t before = millisecondsNow() - clocksApart;
        const DLLHolder client("ModuleClient", "");
        const std::int64_t after = millisecondsNow() + clocksApart;

        const int drawn = client.resolve<int()>("drawn")();
        const std::vector<int> seeds = seedsOf(static_cast<std::uint32_t>(drawn));
        ASSERT_EQ(seeds.size(), 1U) << "number " << drawn;
        EXPECT_LE((seeds.front() - before % 1000 + 1000) % 1000, after - before)
            << "seed " << seeds.front() << ", loaded from " << before << " to " << after;
    }
}

} // namespace
