#include "ZOL/Testing/LogMatchers.h"

#include <string>

#include <gmock/gmock.h>
#include <gtest/gtest-spi.h>
#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

using namespace ZOL::Framework::GenericLogger;
using testing::AllOf;
using testing::Contains;
using testing::ElementsAre;
using testing::Ge;
using testing::HasSubstr;
using testing::IsEmpty;
using testing::Not;
using testing::SizeIs;
using testing::StartsWith;
using ZOL::Testing::CapturedLog;
using ZOL::Testing::CapturedMessage;
using ZOL::Testing::IsMessage;
using ZOL::Testing::Logged;

namespace {

using testing::_;

MATCHER(IsShort, "is short") {
    *result_listener << "which has " << arg.size() << " characters";
    return arg.size() < 3;
}

/// GoogleTest names a type with the key word of its declaration where the compiler does.
std::string withoutKeyWords(std::string text) {
    for (const std::string word : {"class ", "struct "}) {
        const std::size_t found = text.find("of type " + word);
        if (found != std::string::npos) {
            text.erase(text.find(word, found), word.size());
        }
    }
    return text;
}

/// A fixture with a CapturedLog, as tests of users have one.
class LogMatchers : public testing::Test {
protected:
    LogMatchers() {
        Logger::getLogger("orders")->info("order 17");
        Logger::getLogger("orders")->error("sold out: apples");
        Logger::getLogger("billing")->log(static_cast<LoggingLevel>(45), "no address");
    }

    /// The text of the failure of EXPECT_THAT(log, matcher) that GoogleTest reports.
    template <typename Value, typename Matcher>
    static std::string failure(const Value& value, const Matcher& matcher) {
        testing::TestPartResultArray failures;
        {
            const testing::ScopedFakeTestPartResultReporter reporter(
                testing::ScopedFakeTestPartResultReporter::INTERCEPT_ONLY_CURRENT_THREAD,
                &failures);
            EXPECT_THAT(value, matcher);
        }
        std::string text = failures.size() == 1 ? failures.GetTestPartResult(0).message() : "";
        if (!text.empty() && text.back() == '\n') { // from GoogleTest 1.16 on
            text.pop_back();
        }
        return withoutKeyWords(text);
    }

    CapturedLog captured;
};

TEST_F(LogMatchers, LoggedFindsOneMessageThatFits) {
    EXPECT_THAT(captured, Logged(LOG_LEVEL_ERROR));
    EXPECT_THAT(captured, Logged(LOG_LEVEL_ERROR, "orders"));
    EXPECT_THAT(captured, Logged(LOG_LEVEL_ERROR, "orders", "sold out: apples"));
    EXPECT_THAT(captured, Logged(LOG_LEVEL_ERROR, "orders", HasSubstr("sold out")));
    EXPECT_THAT(captured, Logged(Ge(LOG_LEVEL_WARNING), StartsWith("bill"), _));
    EXPECT_THAT(captured, Logged(_, std::string("orders"), StartsWith("order")));
    EXPECT_THAT(captured, AllOf(Logged(LOG_LEVEL_INFO), Not(Logged(LOG_LEVEL_FATAL))));
}

TEST_F(LogMatchers, LoggedNeedsOneMessageThatFitsInEachPart) {
    EXPECT_THAT(captured, Not(Logged(LOG_LEVEL_WARNING)));
    EXPECT_THAT(captured, Not(Logged(LOG_LEVEL_INFO, "billing")));
    EXPECT_THAT(captured, Not(Logged(LOG_LEVEL_INFO, "orders", HasSubstr("sold out"))));
    EXPECT_THAT(captured, Not(Logged(LOG_LEVEL_ERROR, "orders", "sold out")));
    EXPECT_THAT(captured, Not(Logged(_, "Orders")));
}

TEST_F(LogMatchers, LoggedFindsTheLastMessageAndNoneInAnEmptyLog) {
    EXPECT_THAT(captured, Logged(_, "billing"));
    captured.clear();
    EXPECT_THAT(captured, Not(Logged(_)));
}

TEST_F(LogMatchers, IsMessageMatchesElements) {
    EXPECT_THAT(captured,
                ElementsAre(IsMessage(LOG_LEVEL_INFO, "orders", "order 17"),
                            IsMessage(Ge(LOG_LEVEL_ERROR), _, HasSubstr("apples")), IsMessage(_)));
    EXPECT_THAT(captured, Contains(IsMessage(_, "orders")).Times(2));
    EXPECT_THAT(captured, Not(Contains(IsMessage(LOG_LEVEL_INFO, "billing"))));
    EXPECT_THAT(captured[0], Not(IsMessage(LOG_LEVEL_ERROR)));
    EXPECT_THAT(captured[0], Not(IsMessage(_, "billing")));
    EXPECT_THAT(captured[0], Not(IsMessage(_, _, "order 18")));
}

TEST_F(LogMatchers, MatchersOfContainersMatchALog) {
    EXPECT_THAT(captured, SizeIs(3));
    EXPECT_THAT(captured, Not(IsEmpty()));
    captured.clear();
    EXPECT_THAT(captured, IsEmpty());
}

constexpr const char* whatDidCome = "  Actual: 3 messages:\n"
                                    "    INFO [orders] order 17\n"
                                    "    ERROR [orders] sold out: apples\n"
                                    "    WARNING+5 [billing] no address\n"
                                    " (of type ZOL::Testing::CapturedLog)";

TEST_F(LogMatchers, AFailureSaysWhatWasExpectedAndListsWhatDidCome) {
    EXPECT_EQ(failure(captured, Logged(LOG_LEVEL_ERROR, "orders", HasSubstr("pears"))),
              std::string("Value of: value\n"
                          "Expected: has a message whose level is equal to ERROR and whose logger "
                          "is equal to \"orders\" and whose text has substring \"pears\"\n") +
                  whatDidCome);
    EXPECT_EQ(failure(captured, Logged(LOG_LEVEL_FATAL)),
              std::string("Value of: value\n"
                          "Expected: has a message whose level is equal to FATAL\n") +
                  whatDidCome);
    EXPECT_EQ(failure(captured, Not(Logged(Ge(LOG_LEVEL_WARNING), _, StartsWith("no")))),
              std::string("Value of: value\n"
                          "Expected: has no message whose level is >= WARNING and whose text "
                          "starts with \"no\"\n") +
                  whatDidCome + ", whose message #2 matches");
    EXPECT_EQ(failure(captured, Not(Logged(_))),
              std::string("Value of: value\nExpected: has no message\n") + whatDidCome +
                  ", whose message #0 matches");
}

TEST_F(LogMatchers, AFailureWithAnEmptyLogSaysSo) {
    captured.clear();
    EXPECT_EQ(failure(captured, Logged(_, "orders")),
              "Value of: value\n"
              "Expected: has a message whose logger is equal to \"orders\"\n"
              "  Actual: no messages (of type ZOL::Testing::CapturedLog)");
}

TEST_F(LogMatchers, AFailureOfAnElementSaysWhichPartDiffers) {
    EXPECT_EQ(
        failure(captured, ElementsAre(IsMessage(LOG_LEVEL_INFO), IsMessage(LOG_LEVEL_INFO), _)),
        std::string("Value of: value\n"
                    "Expected: has 3 elements where\n"
                    "element #0 is a message whose level is equal to INFO,\n"
                    "element #1 is a message whose level is equal to INFO,\n"
                    "element #2 is anything\n") +
            whatDidCome + ", whose element #1 doesn't match, whose level is ERROR");
    EXPECT_EQ(failure(captured[0], IsMessage(_, "billing")),
              "Value of: value\n"
              "Expected: is a message whose logger is equal to \"billing\"\n"
              "  Actual: INFO [orders] order 17 (of type ZOL::Testing::CapturedMessage), "
              "whose logger is \"orders\"");
    EXPECT_EQ(failure(captured[0], IsMessage(_, _, IsShort())),
              "Value of: value\n"
              "Expected: is a message whose text is short\n"
              "  Actual: INFO [orders] order 17 (of type ZOL::Testing::CapturedMessage), "
              "whose text is \"order 17\", which has 8 characters");
    EXPECT_EQ(failure(captured[0], Not(IsMessage(LOG_LEVEL_INFO))),
              "Value of: value\n"
              "Expected: is not a message whose level is equal to INFO\n"
              "  Actual: INFO [orders] order 17 (of type ZOL::Testing::CapturedMessage)");
}

} // namespace
