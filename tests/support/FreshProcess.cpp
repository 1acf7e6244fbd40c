#include "FreshProcess.h"

#include <string>

#include <gtest/gtest.h>

#include "ChildProcess.h"

namespace support {

namespace {

constexpr const char* mark = "ZOL_TEST_IN_FRESH_PROCESS";

} // namespace

bool isFreshProcess() {
    return !ChildProcess::environment(mark).empty();
}

void inFreshProcess(const std::function<void()>& body) {
    if (isFreshProcess()) {
        ChildProcess::endWithParent();
        body();
        return;
    }
    const testing::TestInfo& test = *testing::UnitTest::GetInstance()->current_test_info();
    const std::string name = std::string(test.test_suite_name()) + "." + test.name();
    ChildProcess::setEnvironment(mark, "1");
    ChildProcess process({ChildProcess::thisProgram(), "--gtest_filter=" + name, "--gtest_repeat=1",
                          "--gtest_brief=1", "--gtest_output="});
    ChildProcess::setEnvironment(mark, "");
    EXPECT_EQ(process.wait(), passedInFreshProcess)
        << "the process of its own failed, or did not run exactly this test: see its output above";
}

} // namespace support
