// The entry point of every test program. A run that selects no test fails: a filter that matches
// nothing would pass without checking anything.

#include <cstdio>

#include <gtest/gtest.h>

#include "FreshProcess.h"

namespace {

int exitCode(int failed) {
    const testing::UnitTest& tests = *testing::UnitTest::GetInstance();
    const int run = tests.successful_test_count() + tests.failed_test_count();
    if (GTEST_FLAG_GET(list_tests) || failed != 0) {
        return failed;
    }
    if (run == 0) {
        std::fputs("no test was run\n", stderr);
        return 1;
    }
    return support::isFreshProcess() && run == 1 ? support::passedInFreshProcess : 0;
}

} // namespace

int main(int argc, char** argv) {
    testing::InitGoogleTest(&argc, argv);
    return exitCode(RUN_ALL_TESTS());
}
