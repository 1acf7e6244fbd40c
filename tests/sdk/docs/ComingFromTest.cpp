// The examples of coming-from.md.

#include <iomanip>
#include <ios>
#include <string>
#include <vector>

#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackend.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

#include "CollectorClass.inc"

TEST(ComingFrom, TheFirstStepsAndASinkOfOnesOwn) {
#include "coming_from_collector.inc"
    const int pieces = 2;
    int calls = 0;
    const auto expensive = [&calls] {
        return ++calls;
    };
    testing::internal::CaptureStderr();
#include "coming_from.inc"
    const std::string written = testing::internal::GetCapturedStderr();
    EXPECT_NE(written.find(" INFO [shop.orders] order 17: 3.50\n"), std::string::npos) << written;
    EXPECT_EQ(collector->lines,
              (std::vector<std::string>{"30 order 17: 3.50", "40 stock is low", "60 no paper"}));
    EXPECT_EQ(calls, 0);
}

} // namespace
