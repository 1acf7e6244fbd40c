#include "Diagnostics.h"

#include <gtest/gtest.h>

using ZOL::Backends::DropCounter;

namespace {

TEST(DropCounter, ReportsTheFirstDropAndTheCountAtTheNextWrite) {
    testing::internal::CaptureStderr();
    DropCounter drops("Test");
    drops.reset();
    drops.add("no room\nleft");
    drops.add("no room");
    drops.add("still no room");
    drops.reset();
    drops.reset();
    drops.add("again");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: no room\\nleft\n"
              "ZOL back end Test: works again, lost messages: 3\n"
              "ZOL back end Test: messages are being lost: again\n");
}

TEST(DropCounter, ReportsTheCountAtExitOnlyIfThereAreDrops) {
    testing::internal::CaptureStderr();
    DropCounter drops("Test");
    drops.reportAtExit();
    drops.add("no room");
    drops.add("no room");
    drops.reportAtExit();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: no room\n"
              "ZOL back end Test: the process ends, lost messages: 2\n");
}

} // namespace
