#pragma once

#include <ostream>
#include <sstream>
#include <string>
#include <utility>

#include <gmock/gmock-matchers.h>

#include "ZOL/Testing/CapturedLog.h"

namespace ZOL::Testing {

namespace detail {

/// The expectations on one message.
class MessageMatcher final : public testing::MatcherInterface<const CapturedMessage&> {
public:
    using Level = testing::Matcher<Framework::GenericLogger::LoggingLevel>;
    using Text = testing::Matcher<const std::string&>;

    MessageMatcher(Level level, Text logger, Text text)
        : level_(std::move(level)), logger_(std::move(logger)), text_(std::move(text)) {}

    bool MatchAndExplain(const CapturedMessage& message,
                         testing::MatchResultListener* listener) const override {
        return matches("level", level_, message.level, listener) &&
               matches("logger", logger_, message.logger, listener) &&
               matches("text", text_, message.text, listener);
    }

    void DescribeTo(std::ostream* out) const override {
        *out << "is a message";
        describeParts(out);
    }

    void DescribeNegationTo(std::ostream* out) const override {
        *out << "is not a message";
        describeParts(out);
    }

    /// Writes " whose level is equal to ERROR and whose text is equal to "sold out"". A part that
    /// may be anything is left out.
    void describeParts(std::ostream* out) const {
        const std::string parts[] = {part("level", level_), part("logger", logger_),
                                     part("text", text_)};
        const char* separator = " ";
        for (const std::string& part : parts) {
            if (!part.empty()) {
                *out << separator << part;
                separator = " and ";
            }
        }
    }

private:
    template <typename Expected, typename Value>
    static bool matches(const char* name, const testing::Matcher<Expected>& matcher,
                        const Value& value, testing::MatchResultListener* listener) {
        testing::StringMatchResultListener reason;
        if (matcher.MatchAndExplain(value, &reason)) {
            return true;
        }
        *listener << "whose " << name << " is " << testing::PrintToString(value);
        if (!reason.str().empty()) {
            *listener << ", " << reason.str();
        }
        return false;
    }

    template <typename Value>
    static std::string part(const char* name, const testing::Matcher<Value>& matcher) {
        const std::string description = describe(matcher);
        return description == describe(testing::A<Value>())
                   ? std::string()
                   : std::string("whose ") + name + " " + description;
    }

    template <typename Value>
    static std::string describe(const testing::Matcher<Value>& matcher) {
        std::ostringstream description;
        matcher.DescribeTo(&description);
        return description.str();
    }

    Level level_;
    Text logger_;
    Text text_;
};

/// The expectation that a log contains such a message.
class LoggedMatcher final : public testing::MatcherInterface<const CapturedLog&> {
public:
    explicit LoggedMatcher(MessageMatcher message) : message_(std::move(message)) {}

    bool MatchAndExplain(const CapturedLog& log,
                         testing::MatchResultListener* listener) const override {
        std::size_t index = 0;
        for (const CapturedMessage& message : log) {
            testing::StringMatchResultListener ignored;
            if (message_.MatchAndExplain(message, &ignored)) {
                *listener << "whose message #" << index << " matches";
                return true;
            }
            ++index;
        }
        return false;
    }

    void DescribeTo(std::ostream* out) const override {
        *out << "has a message";
        message_.describeParts(out);
    }

    void DescribeNegationTo(std::ostream* out) const override {
        *out << "has no message";
        message_.describeParts(out);
    }

private:
    MessageMatcher message_;
};

} // namespace detail

/// Matches a CapturedMessage. Each argument is a value or a matcher of GoogleMock:
///
///     EXPECT_THAT(captured, ElementsAre(IsMessage(LOG_LEVEL_INFO, "orders", "begun"),
///                                       IsMessage(Ge(LOG_LEVEL_WARNING))));
inline testing::Matcher<const CapturedMessage&>
IsMessage(const testing::Matcher<Framework::GenericLogger::LoggingLevel>& level,
          const testing::Matcher<const std::string&>& logger = testing::_,
          const testing::Matcher<const std::string&>& text = testing::_) {
    return testing::MakeMatcher(new detail::MessageMatcher(level, logger, text));
}

/// Matches a CapturedLog that has at least one such message. The arguments are those of IsMessage:
///
///     EXPECT_THAT(captured, Logged(LOG_LEVEL_ERROR, "orders", HasSubstr("sold out")));
inline testing::Matcher<const CapturedLog&>
Logged(const testing::Matcher<Framework::GenericLogger::LoggingLevel>& level,
       const testing::Matcher<const std::string&>& logger = testing::_,
       const testing::Matcher<const std::string&>& text = testing::_) {
    return testing::MakeMatcher(
        new detail::LoggedMatcher(detail::MessageMatcher(level, logger, text)));
}

} // namespace ZOL::Testing
