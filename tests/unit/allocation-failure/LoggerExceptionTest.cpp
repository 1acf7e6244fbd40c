#include "FailingDemangler.h"
#include "OutOfMemory.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Framework/GenericLogger/LoggerBackendLoadError.h"
#include "ZOL/Framework/GenericLogger/LoggerException.h"

using support::longText;
using namespace ZOL::Framework::GenericLogger;

namespace {

constexpr const char* longFile = "a file name that is longer than a short string";
const std::string description =
    std::string("class ZOL::Framework::GenericLogger::LoggerException' (") + longFile +
    ":12): " + longText;

class LoggerExceptionOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(LoggerExceptionOutOfMemory);

TEST_P(LoggerExceptionOutOfMemory, TheConstructorWithoutAMessageLeavesNothing) {
    EXPECT_EQ(sweep([] { const LoggerException exception(longFile, 12); }), 2U);
}

TEST_P(LoggerExceptionOutOfMemory, TheConstructorWithAMessageLeavesNothing) {
    EXPECT_EQ(sweep([] { const LoggerException exception(longText, longFile, 12); }), 3U);
}

TEST_P(LoggerExceptionOutOfMemory, TheCopyConstructorLeavesNothingAndItsSourceAlone) {
    const LoggerException source(longText, longFile, 12);
    const std::string what = source.what();
    EXPECT_EQ(sweep([&] { static_cast<void>(LoggerException(source)); },
                    [&] {
                        EXPECT_STREQ(source.message(), longText);
                        EXPECT_STREQ(source.filename(), longFile);
                        EXPECT_EQ(source.what(), what);
                    }),
              4U);
}

TEST_P(LoggerExceptionOutOfMemory, AFailedAssignmentLeavesEachTextEitherOldOrNew) {
    const LoggerException source(longText, longFile, 12);
    EXPECT_STREQ(source.filename(), longFile);
    LoggerException target("old", "old file", 5);
    const std::string oldWhat = target.what();
    const std::string newWhat = source.what();
    const auto isOneOf = [](const std::string& text, const std::string& one,
                            const std::string& other) {
        return text == one || text == other;
    };
    // Texts that were assigned keep their storage, so blocks remain.
    EXPECT_EQ(sweep([&] { target = source; },
                    [&] {
                        EXPECT_TRUE(isOneOf(target.message(), "old", longText));
                        EXPECT_TRUE(isOneOf(target.filename(), "old file", longFile));
                        EXPECT_TRUE(isOneOf(target.what(), oldWhat, newWhat));
                        target = LoggerException("old", "old file", 5);
                        target.what();
                    },
                    anyNumber) > 0,
              true);
    EXPECT_STREQ(target.message(), longText);
    EXPECT_STREQ(target.filename(), longFile);
    EXPECT_EQ(target.lineNumber(), 12);
    EXPECT_EQ(target.what(), newWhat);
}

TEST_P(LoggerExceptionOutOfMemory, ANewFileNameThatFailsLeavesTheOldOne) {
    LoggerException exception("message", "old file", 5);
    EXPECT_EQ(sweep([&] { exception.filename(longFile); },
                    [&] {
                        EXPECT_STREQ(exception.filename(), "old file");
                        EXPECT_STREQ(exception.message(), "message");
                        EXPECT_EQ(exception.lineNumber(), 5);
                    }),
              1U);
    EXPECT_STREQ(exception.filename(), longFile);
}

TEST_P(LoggerExceptionOutOfMemory, WhatIsEmptyThenAndCompleteAtALaterCall) {
    std::size_t failedAttempts = 0;
    for (bool failed = true; failed;) {
        const LoggerException exception(longText, longFile, 12);
        std::string text(description.size() + 1,
                         '\0'); // large enough, allocated before the failure
        const Outcome outcome = attempt(failedAttempts + 1, [&] { text.assign(exception.what()); });
        failed = outcome.failed;
        EXPECT_FALSE(outcome.threwBadAlloc) << "it never throws";
        if (failed) {
            ++failedAttempts;
            EXPECT_EQ(text, "") << "after the failure of allocation " << failedAttempts;
            EXPECT_EQ(outcome.blocksLeft, 0);
        } else {
            EXPECT_EQ(text, description);
        }
        EXPECT_EQ(exception.what(), description);
    }
    EXPECT_GE(failedAttempts, 3U);
}

TEST_P(LoggerExceptionOutOfMemory, WhatIsEmptyIfTheClassNameCannotBeDemangled) {
    const LoggerException exception(longText, longFile, 12);
    support::failDemangling(true);
    EXPECT_STREQ(exception.what(), "");
    EXPECT_STREQ(exception.what(), "");
    support::failDemangling(false);
    EXPECT_EQ(exception.what(), description);
}

TEST_P(LoggerExceptionOutOfMemory, LookingAtItNeedsNoneOnceWhatIsBuilt) {
    const LoggerException exception(longText, longFile, 12);
    exception.what();
    EXPECT_EQ(allocationsOf([&] {
                  exception.what();
                  exception.message();
                  exception.filename();
                  exception.lineNumber();
              }),
              0U);
}

TEST_P(LoggerExceptionOutOfMemory, ARefusedInstallationGivesBadAllocInItsPlace) {
    EXPECT_GE(sweep(
                  [] {
                      try {
                          Logger::installBackend(static_cast<LoggerBackend*>(nullptr));
                      } catch (const LoggerBackendLoadError&) {
                      }
                  },
                  [] { onAnotherThread([] { Logger::getLogger("another thread's"); }); }),
              2U);
}

} // namespace
