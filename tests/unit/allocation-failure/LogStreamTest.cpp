#include <iomanip>
#include <string>

#include "CountingBackend.h"
#include "OutOfMemory.h"

#include "ZOL/Framework/GenericLogger/Logger.h"

using support::CountingBackend;
using support::Installed;
using support::longText;
using namespace ZOL::Framework::GenericLogger;

namespace {

class LogStreamOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(LogStreamOutOfMemory);

TEST_P(LogStreamOutOfMemory, ALineThatCannotBeBuiltIsNotLoggedEvenInPart) {
    static CountingBackend backend;
    const Installed installed(backend);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    const int before = backend.logged();
    const std::string veryLong(500, 'x');
    EXPECT_EQ(sweep([&] { logger->info("first half, ") << longText << veryLong << 1 << veryLong; },
                    [&] {
                        EXPECT_EQ(backend.logged(), before);
                        onAnotherThread([&] { Logger::getLogger("another thread's"); });
                    }),
              2U)
        << "the line grows twice";
    EXPECT_EQ(backend.logged(), before + 1);
    EXPECT_EQ(backend.lastText(),
              std::string("first half, ") + longText + veryLong + "1" + veryLong);
}

TEST_P(LogStreamOutOfMemory, AFailedManipulatorLeavesNoPartialLine) {
    static CountingBackend backend;
    const Installed installed(backend);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    const int before = backend.logged();
    EXPECT_EQ(sweep(
                  [&] {
                      LogStream line = logger->info();
                      for (int i = 0; i < 1000; ++i) { // until the line has grown twice
                          line << std::endl << std::hex;
                      }
                  },
                  [&] { EXPECT_EQ(backend.logged(), before); }),
              2U);
    EXPECT_EQ(backend.logged(), before + 1);
}

TEST_P(LogStreamOutOfMemory, ACopyThatFailsLeavesTheRightToLogWithTheSource) {
    static CountingBackend backend;
    const Installed installed(backend);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    const std::string veryLong(500, 'x');
    std::size_t failures = 0;
    for (bool failed = true; failed;) {
        const int before = backend.logged();
        {
            LogStream source = logger->info();
            source << veryLong;
            const Outcome outcome = attempt(failures + 1, [&] {
                const LogStream copy(source); // NOLINT(performance-unnecessary-copy-initialization)
            });
            EXPECT_EQ(outcome.threwBadAlloc, outcome.failed);
            failed = outcome.failed;
            if (failed) {
                ++failures;
                EXPECT_EQ(outcome.blocksLeft, 0);
            }
        }
        EXPECT_EQ(backend.logged(), before + 1) << "by the copy if there is one";
    }
    EXPECT_EQ(failures, 1U);
    EXPECT_EQ(backend.lastText(), veryLong);
}

TEST_P(LogStreamOutOfMemory, ALineOfAFewHundredCharactersNeedsNone) {
    static CountingBackend backend;
    const Installed installed(backend);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    const std::string text(300, 'x');
    EXPECT_EQ(allocationsOf([&] {
                  logger->info("numbers ") << 1 << ' ' << 2.5 << ' ' << true << ' '
                                           << static_cast<void*>(&backend) << ' ' << text;
              }),
              0U);
    EXPECT_EQ(allocationsOf([&] {
                  logger->info("flags ") << std::hex << 255 << std::setw(10) << 2.5 << text;
              }),
              0U)
        << "nor does the stream behind it";
}

} // namespace
