// Writes for which the system sends SIGPIPE or SIGXFSZ, which end a process by default.

#include <algorithm>
#include <csignal>
#include <string>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "BrokenPipe.h"
#include "FreshFolder.h"
#include "FreshProcess.h"
#include "ListeningSocket.h"
#include "Property.h"
#include "RedirectedStandardError.h"
#include "SignalCalls.h"
#include "Signals.h"
#include "linux/PrivateMounts.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

void limitFiles(rlim_t size) {
    rlimit limit{};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    limit.rlim_cur = size;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

/// The number of system calls about signals for the second message, which finds the sink open.
int signalCallsForAMessage() {
    Logger* const logger = Logger::getLogger("orders");
    logger->info("first");
    SignalCalls::reset();
    logger->info("second");
    return SignalCalls::maskCalls() + SignalCalls::pendingCalls();
}

TEST(WriteSignals, OfAMessageOnConsoleAreBlocked) {
    inFreshFolder([] {
        const BrokenPipe pipe;
        const RedirectedStandardError redirected(pipe.descriptor());
        Logger::installBackend("Console");
        EXPECT_NO_THROW(Logger::getLogger("orders")->info("dropped"));
        EXPECT_FALSE(isBlocked(SIGPIPE));
    });
}

TEST(WriteSignals, OfAMessageOnConsoleDoNotStayPendingIfTheHostHasBlockedThem) {
    inFreshFolder([] {
        const BlockedSignal blocked(SIGPIPE);
        {
            const BrokenPipe pipe;
            const RedirectedStandardError redirected(pipe.descriptor());
            Logger::installBackend("Console");
            Logger::getLogger("orders")->info("dropped");
        }
        EXPECT_TRUE(isBlocked(SIGPIPE));
        EXPECT_FALSE(isPending(SIGPIPE));
    });
}

TEST(WriteSignals, OfTheHostStayPendingWhileConsoleWrites) {
    inFreshFolder([] {
        const BlockedSignal blocked(SIGPIPE);
        raise(SIGPIPE);
        {
            const BrokenPipe pipe;
            const RedirectedStandardError redirected(pipe.descriptor());
            Logger::installBackend("Console");
            Logger::getLogger("orders")->info("dropped");
        }
        EXPECT_TRUE(isPending(SIGPIPE));
    });
}

TEST(WriteSignals, OfAReportOnStandardErrorAreBlocked) {
    inFreshFolder([] {
        const BrokenPipe pipe;
        const RedirectedStandardError redirected(pipe.descriptor());
        setProperty("RotatingFile.size", "none");
        EXPECT_NE(Logger::installBackend("RotatingFile"), nullptr);
        EXPECT_FALSE(isPending(SIGPIPE));
    });
}

TEST(WriteSignals, AreNotHandledWhereConsoleCannotRaiseThem) {
    inFreshFolder([] {
        const int device = open("/dev/null", O_WRONLY | O_CLOEXEC);
        const int file = open("console.txt", O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        Logger::installBackend("Console");
        for (const int descriptor : {device, file}) {
            const RedirectedStandardError redirected(descriptor);
            EXPECT_EQ(signalCallsForAMessage(), 0);
        }
        close(device);
        close(file);
        EXPECT_NE(textOf("console.txt").find("INFO [orders] second\n"), std::string::npos);
    });
}

TEST(WriteSignals, AreBlockedAndUnblockedAndNothingElseForAPipeWithAReader) {
    inFreshFolder([] {
        int pipe[2] = {};
        ASSERT_EQ(::pipe(pipe), 0);
        Logger::installBackend("Console");
        {
            const RedirectedStandardError redirected(pipe[1]);
            EXPECT_EQ(signalCallsForAMessage(), 2);
        }
        close(pipe[0]);
        close(pipe[1]);
    });
}

TEST(WriteSignals, AreNotHandledForRotatingFileWithoutASizeLimit) {
    inFreshFolder([] {
        Logger::installBackend("RotatingFile");
        EXPECT_EQ(signalCallsForAMessage(), 0);
    });
}

TEST(WriteSignals, AreNotHandledForDailyFileWithoutASizeLimit) {
    inFreshFolder([] {
        Logger::installBackend("DailyFile");
        EXPECT_EQ(signalCallsForAMessage(), 0);
    });
}

TEST(WriteSignals, AreNotHandledForTheSystemLog) {
    support::inFreshProcess([] {
        support::leaveTheMachinesMounts();
        support::mountMemory("/dev", "size=1m");
        const ListeningSocket log("/dev/log");
        Logger::installBackend("SystemLog");
        EXPECT_EQ(signalCallsForAMessage(), 0);
    });
}

TEST(WriteSignals, OfAConsoleThatBecomesAFileUnderASizeLimitAreBlocked) {
    inFreshFolder([] {
        const int file = open("console.txt", O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        Logger::installBackend("Console");
        Logger* const logger = Logger::getLogger("orders");
        logger->info("written before");
        {
            const BlockedSignal blocked(SIGXFSZ);
            const RedirectedStandardError redirected(file);
            limitFiles(10);
            EXPECT_NO_THROW(logger->info("fits in part"));
            EXPECT_NO_THROW(logger->info("dropped"));
            EXPECT_FALSE(isPending(SIGXFSZ));
            limitFiles(RLIM_INFINITY);
            logger->info("written");
        }
        close(file);
        const std::string text = textOf("console.txt");
        EXPECT_EQ(std::count(text.begin(), text.end(), '\n'), 3) << text;
        EXPECT_EQ(text.find('\n'), 10U) << "the torn line is terminated: " << text;
        EXPECT_NE(text.find("INFO [orders] written\n"), std::string::npos) << text;
        EXPECT_NE(text.find("Console: works again, lost messages: 2\n"), std::string::npos) << text;
    });
}

TEST(WriteSignals, OfDailyFileBeyondTheSizeLimitAreBlocked) {
    inFreshFolder([] {
        const BlockedSignal blocked(SIGXFSZ);
        Logger::installBackend("DailyFile");
        limitFiles(0);
        Logger::getLogger("orders")->info("dropped");
        limitFiles(RLIM_INFINITY);
        EXPECT_FALSE(isPending(SIGXFSZ));
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
        {
            const BlockedSignal pipe(SIGPIPE);
            raise(SIGPIPE);
            EXPECT_NO_THROW(logger->info() << text); // fits in part
            EXPECT_TRUE(isPending(SIGPIPE)) << "it is the host's";
        }
        const BlockedSignal fileSize(SIGXFSZ);
        EXPECT_NO_THROW(logger->info() << text);
        EXPECT_FALSE(isPending(SIGXFSZ));
        EXPECT_TRUE(isBlocked(SIGXFSZ));
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
