// Flags of a pattern that depend on the system.

#include "Pattern.h"

#include <gtest/gtest.h>
#include <windows.h>

#include "PatternLine.h"

namespace {

TEST(PatternOfProcess, HasTheNamesOfTheMachineAndTheProgram) {
    char name[256] = "";
    DWORD size = sizeof(name);
    ASSERT_TRUE(GetComputerNameExA(ComputerNameDnsHostname, name, &size));
    EXPECT_EQ(PatternLine("%W %N").at(exampleTime()),
              std::string(name) + " zol_backend_common_tests");
}

TEST(PatternOfProcess, HasTheNumbersOfTheThreadAndTheProcess) {
    EXPECT_EQ(PatternLine("%t %P").at(exampleTime()),
              std::to_string(GetCurrentThreadId()) + " " + std::to_string(GetCurrentProcessId()));
}

} // namespace
