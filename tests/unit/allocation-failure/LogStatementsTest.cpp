#include <chrono>
#include <string>

#include "CountingBackend.h"
#include "FailingAllocator.h"
#include "OutOfMemory.h"

#include "ZOL/Framework/GenericLogger/LogStatements.h"

using support::CountingBackend;
using support::Installed;
using namespace ZOL::Framework::GenericLogger;
namespace FailingAllocator = support::FailingAllocator;

namespace {

constexpr std::chrono::hours tooLong(1);
constexpr std::chrono::hours atOnce(0);

// A line has space for 400 characters in itself: not for this text and a number.
const std::string text(395, 'x');

/// Needs no memory.
struct TextFailure {};

class LogStatementsOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(LogStatementsOutOfMemory);

TEST_P(LogStatementsOutOfMemory, ALineWithoutMemoryForTheNumberIsNotLogged) {
    static CountingBackend backend;
    const Installed installed(backend);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    const auto statement = [logger](std::chrono::hours interval) {
        ZOL_LOG_EVERY(logger, LOG_LEVEL_FATAL, interval) << text;
    };
    statement(atOnce);
    const int before = backend.logged();
    EXPECT_EQ(sweep(
                  [&] {
                      statement(tooLong);
                      statement(atOnce);
                  },
                  [&] { EXPECT_EQ(backend.logged(), before); }),
              1U);
    EXPECT_EQ(backend.logged(), before + 1);
    EXPECT_EQ(backend.lastText(), text + " (1 suppressed)");
}

TEST_P(LogStatementsOutOfMemory, AnExceptionOfTheTextPassesALineWithoutMemoryForTheNumber) {
    static CountingBackend backend;
    const Installed installed(backend);
    Logger* const logger = Logger::getLogger(uniqueName().c_str());
    const auto statement = [logger](std::chrono::hours interval) {
        ZOL_LOG_EVERY(logger, LOG_LEVEL_FATAL, interval)
            << text << (FailingAllocator::start(1, GetParam()), throw TextFailure(), 1);
    };
    EXPECT_THROW(statement(atOnce), TextFailure);
    FailingAllocator::stop();
    const int before = backend.logged();
    statement(tooLong);
    EXPECT_THROW(statement(atOnce), TextFailure);
    FailingAllocator::stop();
    EXPECT_EQ(backend.logged(), before);
}

} // namespace
