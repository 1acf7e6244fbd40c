// Writes for which the system would end the process.

#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "BrokenPipeLinux.h"
#include "FreshFolder.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

/// Standard error leads into a pipe that nobody reads.
class BrokenStandardError {
public:
    BrokenStandardError() : before_(dup(STDERR_FILENO)) { dup2(pipe_.descriptor(), STDERR_FILENO); }
    BrokenStandardError(const BrokenStandardError&) = delete;
    BrokenStandardError& operator=(const BrokenStandardError&) = delete;
    ~BrokenStandardError() {
        dup2(before_, STDERR_FILENO);
        close(before_);
    }

private:
    BrokenPipe pipe_;
    int before_;
};

void limitFiles(rlim_t size) {
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    limit.rlim_cur = size;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST(AWriteThatWouldEndTheProcess, CostsConsoleItsMessages) {
    inFreshFolder([] {
        const BrokenStandardError broken;
        Logger::installBackend("Console");
        EXPECT_NO_THROW(Logger::getLogger("orders")->info("into the void"));
    });
}

TEST(AWriteThatWouldEndTheProcess, MayBeThatOfAComplaint) {
    inFreshFolder([] {
        const BrokenStandardError broken;
        setProperty("RotatingFile.size", "none");
        EXPECT_NE(Logger::installBackend("RotatingFile"), nullptr);
    });
}

TEST(AWriteThatWouldEndTheProcess, CostsRotatingFileMessagesThatItCounts) {
    inFreshFolder([] {
        setProperty("RotatingFile.pattern", "%v");
        testing::internal::CaptureStderr();
        Logger::installBackend("RotatingFile");
        Logger* const logger = Logger::getLogger("orders");
        const std::string text(100, 'x');
        limitFiles(200);
        EXPECT_NO_THROW(logger->info() << text);
        EXPECT_NO_THROW(logger->info() << text); // fits in part
        EXPECT_NO_THROW(logger->info() << text);
        limitFiles(RLIM_INFINITY);
        std::this_thread::sleep_for(std::chrono::milliseconds(1100));
        logger->info("there is room again");
        const std::string told = testing::internal::GetCapturedStderr();
        EXPECT_NE(told.find("\nZOL back end RotatingFile: works again, lost messages: 2\n"),
                  std::string::npos)
            << told;
        const std::string written = textOf("zol.log");
        const std::string last = "\nINFO [orders] there is room again\n";
        EXPECT_EQ(written.rfind(last), written.size() - last.size()) << written;
    });
}

} // namespace
