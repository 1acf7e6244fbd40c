// What questions.md says of fork.

#include <gtest/gtest.h>
#include <sys/wait.h>
#include <unistd.h>

#include "FreshProcess.h"

#include "ZOL/Framework/GenericLogger/Logger.h"
#include "ZOL/Testing/CapturedLog.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

TEST(Questions, BothProcessesDeliverCachedMessagesAfterFork) {
    support::inFreshProcess([] { // without a back end, which would leave nothing in the cache
        Logger* const logger = Logger::getLogger("fork");
        logger->info("cached");
        const pid_t child = fork();
        ASSERT_NE(child, -1);

        const ZOL::Testing::CapturedLog captured;
        logger->info("after fork");
        const bool asDocumented = captured.size() == 2 && captured[0].text == "cached" &&
                                  captured[1].text == "after fork";
        if (child == 0) {
            _exit(asDocumented ? 0 : 1);
        }
        EXPECT_TRUE(asDocumented);
        int status = -1;
        ASSERT_EQ(waitpid(child, &status, 0), child);
        EXPECT_EQ(status, 0);
    });
}

} // namespace
