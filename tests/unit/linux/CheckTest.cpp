// ZOL_CHECK without memory.

#include <string>

#include <gtest/gtest.h>

#include "CheckClient.h"
#include "ChildProcess.h"
#include "CrisisLogSandbox.h"

using support::ChildProcess;
using support::CrisisLogSandbox;

namespace {

CRISIS_LOG_TEST(CheckWithoutMemory, WritesToStandardErrorAndAborts) {
    const std::string error = CrisisLogSandbox::scratch() + "/error";
    const std::string message = "CheckWithoutMemory.cpp:: check failed: isTrue: long: ";
    constexpr int aborted = 128 + 6;    // SIGABRT
    constexpr int manyAllocations = 12; // more than a failed check needs
    for (int first = 1; first <= manyAllocations; ++first) {
        EXPECT_EQ(ChildProcess(
                      {ChildProcess::program("CheckWithoutMemory"), std::to_string(first), error})
                      .wait(),
                  aborted);
        // The first allocation is that for the long text.
        EXPECT_EQ(withoutLineNumber(contentOf(error)),
                  message + (first == 1 ? "" : std::string(1000, 'x')) + "\n");
    }
}

} // namespace
