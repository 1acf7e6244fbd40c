#include <optional>

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

TEST_P(LogStreamOutOfMemory, ALineThatCannotBeBuiltIsNotLoggedNotEvenHalf) {
    static CountingBackend backend;
    const Installed installed(backend);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    const int before = backend.logged();
    const std::string veryLong(2000, 'x');
    EXPECT_GE(sweep([&] { logger->info("first half, ") << longText << " and " << veryLong; },
                    [&] {
                        EXPECT_EQ(backend.logged(), before);
                        onAnotherThread([&] { Logger::getLogger("another thread's"); });
                    }),
              3U);
    EXPECT_EQ(backend.logged(), before + 1);
    EXPECT_EQ(std::string(backend.lastText()).rfind(std::string("first half, ") + longText, 0), 0U);
}

TEST_P(LogStreamOutOfMemory, AManipulatorThatFailsLeavesNoHalfLineEither) {
    static CountingBackend backend;
    const Installed installed(backend);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    const int before = backend.logged();
    EXPECT_GE(sweep(
                  [&] {
                      LogStream line = logger->info();
                      for (int i = 0; i < 600; ++i) { // until the buffer has to grow
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
    std::size_t failures = 0;
    for (bool failed = true; failed;) {
        const int before = backend.logged();
        {
            LogStream source = logger->info();
            source << longText;
            std::optional<LogStream> copy;
            const Outcome outcome = attempt(failures + 1, [&] { copy.emplace(source); });
            EXPECT_EQ(outcome.threwBadAlloc, outcome.failed);
            failed = outcome.failed;
            if (failed) {
                ++failures;
                EXPECT_EQ(outcome.blocksLeft, 0);
            }
        }
        EXPECT_EQ(backend.logged(), before + 1) << "by the copy if there is one";
    }
    EXPECT_GE(failures, 2U);
    EXPECT_STREQ(backend.lastText(), longText);
}

} // namespace
