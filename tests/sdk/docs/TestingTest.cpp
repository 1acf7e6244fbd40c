// The examples of testing.md, with what the page says of them.

#include <fstream>
#include <iterator>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Testing/LogMatchers.h"

using namespace ZOL::Framework::GenericLogger;
using namespace ZOL::Testing;
using testing::Contains;
using testing::ElementsAre;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;

extern "C" bool placeOrder(int pieces);

namespace {

using testing::_;

TEST(TestingDocument, MatchersOfContainersWork) {
    CapturedLog captured;
    Logger::getLogger("shop")->info("open");
    placeOrder(17);
#include "testing_matchers.inc"
}

TEST(TestingDocument, AFailureReadsAsShown) {
    CapturedLog captured;
    placeOrder(2);
    Logger::getLogger("shop.billing")->log(static_cast<LoggingLevel>(35), "invoice sent");
    testing::TestPartResultArray failures;
    {
        const testing::ScopedFakeTestPartResultReporter reporter(
            testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD, &failures);
#include "testing_failure.inc"
    }
    std::ifstream file(FAILURE_FILE);
    const std::string shown(std::istreambuf_iterator<char>(file), {});
    ASSERT_EQ(failures.size(), 1);
    std::string text = failures.GetTestPartResult(0).message();
    if (text.back() != '\n') { // before GoogleTest 1.16
        text += '\n';
    }
    const std::string keyWord = "class "; // which some compilers put before the name of a type
    const std::size_t type = text.find("of type " + keyWord);
    if (type != std::string::npos) {
        text.erase(text.find(keyWord, type), keyWord.size());
    }
    EXPECT_EQ(text, shown);
}

TEST(TestingDocument, ACapturedLogIsAPlainContainer) {
#include "testing_plain.inc"
    EXPECT_TRUE(soldOut);
}

} // namespace
