// Writes for which the system sends SIGPIPE or SIGXFSZ, which end a process by default.

#include <string>
#include <thread>

#include <gtest/gtest.h>
#include <sys/resource.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "BrokenPipe.h"
#include "FreshFolder.h"
#include "Property.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

/// Redirects standard error to a pipe without a reader during its lifetime.
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

TEST(WriteSignals, OfAMessageOnConsoleAreBlocked) {
    inFreshFolder([] {
        const BrokenStandardError broken;
        Logger::installBackend("Console");
        EXPECT_NO_THROW(Logger::getLogger("orders")->info("dropped"));
    });
}

TEST(WriteSignals, OfAReportOnStandardErrorAreBlocked) {
    inFreshFolder([] {
        const BrokenStandardError broken;
        setProperty("RotatingFile.size", "none");
        EXPECT_NE(Logger::installBackend("RotatingFile"), nullptr);
    });
}

TEST(WriteSignals, OfAFileBeyondTheSizeLimitAreBlockedAndDropsCounted) {
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
        const std::string report = testing::internal::GetCapturedStderr();
        EXPECT_NE(report.find("\nZOL back end RotatingFile: works again, lost messages: 2\n"),
                  std::string::npos)
            << report;
        const std::string written = textOf("zol.log");
        const std::string last = "\nINFO [orders] there is room again\n";
        EXPECT_EQ(written.rfind(last), written.size() - last.size()) << written;
    });
}

} // namespace
