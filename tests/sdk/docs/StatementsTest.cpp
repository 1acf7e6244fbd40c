// The examples of statements.md, with what the page says of them.

#include <fstream>
#include <iterator>
#include <sstream>
#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest.h>

#include "ZOL/Testing/LogMatchers.h"

#include "StatementsIncludes.inc" // NOLINT(bugprone-suspicious-include)

using testing::ElementsAre;
using testing::MatchesRegex;
using ZOL::Testing::CapturedLog;
using ZOL::Testing::CapturedMessage;
using ZOL::Testing::IsMessage;

namespace {

using testing::_;

std::string contentOf(const char* file) {
    std::ifstream stream(file);
    return {std::istreambuf_iterator<char>(stream), {}};
}

/// "INFO text", a line each.
std::string textOf(const CapturedLog& log) {
    std::ostringstream text;
    for (const CapturedMessage& message : log) {
        PrintTo(message.level, &text);
        text << ' ' << message.text << '\n';
    }
    return text.str();
}

class StatementsDocument : public testing::Test {
protected:
    StatementsDocument() { logger->minLogLevel(LOG_LEVEL_INFO); }

    CapturedLog captured;
    Logger* const logger = Logger::getLogger("shop.orders");
};

TEST_F(StatementsDocument, TheLoopLogsWhatIsShown) {
    int calls = 0;
    const auto isDelivered = [&calls](int) {
        return ++calls > 0;
    };
#include "statements.inc"
    EXPECT_EQ(textOf(captured), contentOf(MESSAGES_FILE));
    EXPECT_EQ(calls, 0);
}

TEST_F(StatementsDocument, HereNamesThePosition) {
#include "statements_here.inc"
    EXPECT_THAT(captured, ElementsAre(IsMessage(LOG_LEVEL_INFO, _,
                                                MatchesRegex("statements_here.inc:1: sold out"))));
}

} // namespace
