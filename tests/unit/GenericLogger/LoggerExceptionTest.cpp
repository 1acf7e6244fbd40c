#include "ZOL/Framework/GenericLogger/LoggerException.h"

#include <cstring>
#include <exception>
#include <memory>
#include <string>
#include <type_traits>

#include <gtest/gtest.h>

#include "SlotProbe.h"

#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"

using namespace ZOL::Framework::GenericLogger;

// At namespace scope, so that it has a full name.
namespace outer {
struct DerivedException : LoggerException {
    using LoggerException::LoggerException;
};
} // namespace outer

namespace {

static_assert(sizeof(LoggerException) == 2 * sizeof(void*), "a virtual table and one pointer");
static_assert(sizeof(LoggerBackendLoadError) == sizeof(LoggerException));
static_assert(!std::is_base_of_v<std::exception, LoggerException>);
static_assert(
    std::is_same_v<decltype(std::declval<LoggerException&>() = std::declval<LoggerException&>()),
                   const LoggerException&>);

TEST(LoggerExceptions, KeepMessageFileAndLine) {
    const LoggerException exception("message", "file", 42);
    EXPECT_STREQ(exception.message(), "message");
    EXPECT_STREQ(exception.filename(), "file");
    EXPECT_EQ(exception.lineNumber(), 42);
}

TEST(LoggerExceptions, TheTwoArgumentConstructorTakesAFileNameAndLeavesTheMessageEmpty) {
    const LoggerException exception("file", 42);
    EXPECT_STREQ(exception.message(), "");
    EXPECT_STREQ(exception.filename(), "file");
    EXPECT_STREQ(exception.what(),
                 "class ZOL::Framework::GenericLogger::LoggerException' (file:42): ");
}

TEST(LoggerExceptions, WhatShowsClassFileLineAndMessageWithALoneClosingQuote) {
    const LoggerException exception("message", "some/file", -7);
    EXPECT_STREQ(exception.what(),
                 "class ZOL::Framework::GenericLogger::LoggerException' (some/file:-7): message");
}

TEST(LoggerExceptions, WhatNeverBeginsWithTheStreamsInitialContents) {
    EXPECT_NE(std::string(LoggerException("", "", 0).what()).rfind("Exception '", 0), 0U);
    EXPECT_STREQ(LoggerException("", "", 0).what(),
                 "class ZOL::Framework::GenericLogger::LoggerException' (:0): ");
}

TEST(LoggerExceptions, WhatNamesTheMostDerivedClass) {
    const LoggerBackendLoadError error("message", "file", 1);
    const LoggerException& base = error;
    EXPECT_STREQ(base.what(),
                 "class ZOL::Framework::GenericLogger::LoggerBackendLoadError' (file:1): message");
}

TEST(LoggerExceptions, WhatSaysClassForEveryKeywordOfTheDeclaration) {
    EXPECT_STREQ(outer::DerivedException("m", "f", 2).what(),
                 "class outer::DerivedException' (f:2): m");
}

TEST(LoggerExceptions, ASecondWhatIsTheSameTextAtTheSameAddress) {
    const LoggerException exception("message", "file", 1);
    EXPECT_EQ(exception.what(), exception.what());
}

TEST(LoggerExceptions, ChangesAfterTheFirstWhatDoNotShowInIt) {
    LoggerException exception("message", "file", 1);
    const std::string before = exception.what();
    exception.filename("other");
    exception.lineNumber(2);
    EXPECT_STREQ(exception.filename(), "other");
    EXPECT_EQ(exception.lineNumber(), 2);
    EXPECT_EQ(exception.what(), before);
}

TEST(LoggerExceptions, ChangesBeforeTheFirstWhatShowInIt) {
    LoggerException exception("message", "file", 1);
    exception.filename("other");
    exception.lineNumber(2);
    EXPECT_STREQ(exception.what(),
                 "class ZOL::Framework::GenericLogger::LoggerException' (other:2): message");
}

TEST(LoggerExceptions, ACopyMadeAfterWhatCarriesTheTextInABlockOfItsOwn) {
    auto source = std::make_unique<LoggerBackendLoadError>("message", "file", 1);
    const std::string text = source->what();
    const LoggerException copy(*source); // of another class, so a rebuilt text would differ
    EXPECT_NE(copy.what(), source->what());
    source.reset();
    EXPECT_EQ(copy.what(), text);
    EXPECT_STREQ(copy.message(), "message");
    EXPECT_STREQ(copy.filename(), "file");
    EXPECT_EQ(copy.lineNumber(), 1);
}

TEST(LoggerExceptions, ACopyMadeBeforeWhatBuildsItsOwnText) {
    LoggerException source("message", "file", 1);
    LoggerException copy(source);
    copy.lineNumber(2);
    EXPECT_STREQ(source.what(),
                 "class ZOL::Framework::GenericLogger::LoggerException' (file:1): message");
    EXPECT_STREQ(copy.what(),
                 "class ZOL::Framework::GenericLogger::LoggerException' (file:2): message");
}

TEST(LoggerExceptions, AssignmentCopiesAllFourFields) {
    LoggerBackendLoadError source("source", "source file", 1);
    const std::string text = source.what();
    LoggerException target("target", "target file", 2);
    target.what();

    const LoggerException& result = target = source;

    EXPECT_EQ(&result, &target);
    EXPECT_STREQ(target.message(), "source");
    EXPECT_STREQ(target.filename(), "source file");
    EXPECT_EQ(target.lineNumber(), 1);
    EXPECT_EQ(target.what(), text);
}

TEST(LoggerExceptions, AssignmentOfAnExceptionWithoutTextClearsTheBuiltText) {
    const LoggerException source("source", "file", 1);
    LoggerException target("target", "file", 2);
    target.what();
    target = source;
    EXPECT_STREQ(target.what(),
                 "class ZOL::Framework::GenericLogger::LoggerException' (file:1): source");
}

TEST(LoggerExceptions, AssigningToItselfChangesNothing) {
    LoggerException exception("message", "file", 1);
    const LoggerException& same = exception;
    exception = same;
    EXPECT_STREQ(exception.message(), "message");
}

TEST(LoggerExceptions, AreNotStandardExceptions) {
    bool caught = false;
    try {
        throw LoggerBackendLoadError("m", "f", 1);
    } catch (const std::exception&) {
        FAIL();
    } catch (const LoggerException& exception) {
        caught = std::strcmp(exception.message(), "m") == 0;
    }
    EXPECT_TRUE(caught);
}

/// Its overrides return their own names, which shows which slot was called.
class Named final : public LoggerException {
public:
    Named() : LoggerException("", 0) {}
    const char* message() const override { return "message"; }
    const char* what() const override { return "what"; }
};

TEST(LoggerExceptions, MessageAndWhatFollowTheDestructorInThisOrder) {
    const Named object;
    const support::SlotProbe slots(&object);
    const auto message =
        slots.at<const char*(const LoggerException*)>(support::firstSlotAfterDestructor);
    const auto what =
        slots.at<const char*(const LoggerException*)>(support::firstSlotAfterDestructor + 1);
    EXPECT_STREQ(message(&object), "message");
    EXPECT_STREQ(what(&object), "what");
}

} // namespace
