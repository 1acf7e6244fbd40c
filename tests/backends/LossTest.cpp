#include "Loss.h"

#include <gtest/gtest.h>

using ZOL::Backends::Loss;

namespace {

TEST(Loss, SpeaksOnceWhenItBeginsAndOnceWhenItIsOver) {
    testing::internal::CaptureStderr();
    Loss loss("Test");
    loss.end();
    loss.add("no room\nleft");
    loss.add("no room");
    loss.add("still no room");
    loss.end();
    loss.end();
    loss.add("again");
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: no room\\nleft\n"
              "ZOL back end Test: works again, lost messages: 3\n"
              "ZOL back end Test: messages are being lost: again\n");
}

TEST(Loss, IsToldAtTheEndOfTheProcessIfItHasNotEnded) {
    testing::internal::CaptureStderr();
    Loss loss("Test");
    loss.tell();
    loss.add("no room");
    loss.add("no room");
    loss.tell();
    EXPECT_EQ(testing::internal::GetCapturedStderr(),
              "ZOL back end Test: messages are being lost: no room\n"
              "ZOL back end Test: the process ends, lost messages: 2\n");
}

} // namespace
