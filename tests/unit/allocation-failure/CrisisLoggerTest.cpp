#include <filesystem>
#include <fstream>
#include <iterator>

#include "CrisisLogSandbox.h"
#include "OpenHandles.h"
#include "OutOfMemory.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"

using support::CrisisLogSandbox;
using support::longText;
using support::openHandles;
using support::withCrisisLog;
using ZOL::Framework::CrisisLogging::CrisisLogger;
using ZOL::Framework::Exceptions::FrameworkException;

namespace {

std::string content() {
    std::ifstream file(CrisisLogSandbox::path);
    return {std::istreambuf_iterator<char>(file), {}};
}

class CrisisLoggerOutOfMemory : public support::OutOfMemory {};
ZOL_INSTANTIATE_OUT_OF_MEMORY(CrisisLoggerOutOfMemory);

TEST_P(CrisisLoggerOutOfMemory, InstanceThatFailsHoldsNoFileAndSucceedsLater) {
    withCrisisLog([this] {
        const std::size_t openBefore = openHandles();
        CrisisLogger* logger = nullptr;
        EXPECT_EQ(sweep([&] { logger = &CrisisLogger::instance(); },
                        [&] {
                            EXPECT_EQ(logger, nullptr);
                            EXPECT_TRUE(CrisisLogSandbox::isFree());
                            EXPECT_EQ(openHandles(), openBefore);
                        }),
                  2U)
            << "the logger and its private block";
        ASSERT_NE(logger, nullptr);
        onAnotherThread([&] { EXPECT_EQ(&CrisisLogger::instance(), logger); });
        logger->log("works");
        EXPECT_NE(content().find(" - works\n"), std::string::npos);
    });
}

TEST_P(CrisisLoggerOutOfMemory, InstanceThatIsRefusedGivesBadAllocInPlaceOfItsException) {
    withCrisisLog([this] {
        std::filesystem::create_directory(CrisisLogSandbox::path);
        std::string reported(500, '\0'); // large enough, allocated before the failure
        EXPECT_GE(sweep([&] {
                      try {
                          CrisisLogger::instance();
                      } catch (const FrameworkException& exception) {
                          reported.assign(exception.message());
                      }
                  }),
                  4U);
        EXPECT_EQ(reported,
                  std::string("Error opening log file: '") + CrisisLogSandbox::path + "'");
        std::filesystem::remove(CrisisLogSandbox::path);
        onAnotherThread([] { CrisisLogger::instance().log("works"); });
        EXPECT_NE(content().find(" - works\n"), std::string::npos);
    });
}

TEST_P(CrisisLoggerOutOfMemory, ALineThatFailsIsNotWrittenAtAllAndTheNextIs) {
    withCrisisLog([this] {
        CrisisLogger& logger = CrisisLogger::instance();
        logger.log("before");
        std::string expected = content();
        const std::string message = longText + std::string(2000, '.');
        EXPECT_EQ(sweep([&] { logger.log(message.c_str()); },
                        [&] {
                            EXPECT_EQ(content(), expected);
                            onAnotherThread([&] { logger.log("another thread's"); });
                            const std::string now = content();
                            EXPECT_EQ(now.rfind(expected, 0), 0U);
                            EXPECT_NE(now.find(" - another thread's\n", expected.size()),
                                      std::string::npos);
                            expected = now;
                        }),
                  2U)
            << "room for the message, and for the line end";
        const std::string now = content();
        EXPECT_EQ(now.rfind(expected, 0), 0U);
        EXPECT_NE(now.find(" - " + message + "\n", expected.size()), std::string::npos);
    });
}

} // namespace
