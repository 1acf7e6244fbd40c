// The Console back end on a standard error that is a pipe, or closed.

#include <array>
#include <cerrno>
#include <chrono>
#include <csignal>
#include <string>
#include <thread>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "DoLog.h"
#include "FreshProcess.h"
#include "Property.h"
#include "RedirectedStandardError.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

/// A pipe whose read end does not block.
class Pipe {
public:
    explicit Pipe(int flags = 0) {
        EXPECT_EQ(pipe2(ends_.data(), O_CLOEXEC | flags), 0);
        fcntl(ends_[0], F_SETFL, O_NONBLOCK);
    }
    Pipe(const Pipe&) = delete;
    Pipe& operator=(const Pipe&) = delete;
    ~Pipe() {
        close(ends_[0]);
        close(ends_[1]);
    }

    int writeEnd() const { return ends_[1]; }

    /// The next piece: on a pipe with O_DIRECT, what one call has written. Empty if there is none.
    std::string read() const {
        std::string piece(std::size_t{64} * 1024, '\0');
        const ssize_t size = ::read(ends_[0], piece.data(), piece.size());
        piece.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
        return piece;
    }

    /// All that has been written so far.
    std::string readAll() const {
        std::string text;
        for (std::string piece = read(); !piece.empty(); piece = read()) {
            text += piece;
        }
        return text;
    }

    /// Waits for data.
    bool wait() const {
        pollfd arrived{ends_[0], POLLIN, 0};
        constexpr int timeout = 10000; // milliseconds
        while (poll(&arrived, 1, timeout) == -1 && errno == EINTR) {
        }
        return arrived.revents != 0;
    }

    /// Fills a pipe that does not block.
    void fill() const {
        for (const std::size_t size : {4096U, 1U}) {
            const std::string filler(size, '.');
            while (write(writeEnd(), filler.data(), size) > 0) {
            }
        }
    }

private:
    std::array<int, 2> ends_{};
};

Logger* installConsole(const char* pattern = "%v") {
    setProperty("Console.pattern", pattern);
    Logger::installBackend("Console");
    return Logger::getLogger("orders");
}

/// Sends SIGALRM again and again during its lifetime.
class Alarms {
public:
    Alarms() {
        struct sigaction action = {};
        action.sa_handler = [](int) {
        };
        sigaction(SIGALRM, &action, nullptr); // without SA_RESTART
        start(2000);
    }
    Alarms(const Alarms&) = delete;
    Alarms& operator=(const Alarms&) = delete;
    ~Alarms() { start(0); }

private:
    static void start(suseconds_t interval) {
        const itimerval timer{{0, interval}, {0, interval}};
        setitimer(ITIMER_REAL, &timer, nullptr);
    }
};

TEST(ConsoleOnPipe, WritesEachLineInOneCallWithTheColourOfItsLevel) {
    support::inFreshProcess([] {
        setProperty("Console.colour", "always");
        const Pipe pipe(O_DIRECT);
        const RedirectedStandardError redirected(pipe.writeEnd());
        Logger* const logger = installConsole("<%^%v%$>");
        const auto lineAt = [&](int level) {
            support::doLog(logger, static_cast<LoggingLevel>(level), "x");
            return pipe.read();
        };
        EXPECT_EQ(lineAt(10), "<\x1b[37mTRACE [orders] x\x1b[m>\n");
        EXPECT_EQ(lineAt(20), "<\x1b[36mDEBUG [orders] x\x1b[m>\n");
        EXPECT_EQ(lineAt(30), "<\x1b[32mINFO [orders] x\x1b[m>\n");
        EXPECT_EQ(lineAt(40), "<\x1b[33m\x1b[1mWARNING [orders] x\x1b[m>\n");
        EXPECT_EQ(lineAt(50), "<\x1b[31m\x1b[1m"
                              "ERROR [orders] x\x1b[m>\n");
        EXPECT_EQ(lineAt(60), "<\x1b[1m\x1b[41m"
                              "FATAL [orders] x\x1b[m>\n");
        EXPECT_EQ(pipe.read(), "");
    });
}

TEST(ConsoleOnPipe, WritesALongLineInOneCallToo) {
    support::inFreshProcess([] {
        int ends[2];
        ASSERT_EQ(socketpair(AF_UNIX, SOCK_SEQPACKET | SOCK_CLOEXEC, 0, ends), 0);
        const std::string text(20000, 'x');
        {
            const RedirectedStandardError redirected(ends[1]);
            installConsole("%v")->info() << text;
        }
        std::string line(std::size_t{64} * 1024, '\0');
        const ssize_t size = recv(ends[0], line.data(), line.size(), MSG_DONTWAIT);
        ASSERT_GT(size, 0);
        line.resize(static_cast<std::size_t>(size));
        EXPECT_TRUE(line == "INFO [orders] " + text + "\n") << line.size();
        close(ends[0]);
        close(ends[1]);
    });
}

TEST(ConsoleOnPipe, WritesAPatternWithoutAColouredPartAsItIs) {
    support::inFreshProcess([] {
        setProperty("Console.colour", "always");
        const Pipe pipe;
        const RedirectedStandardError redirected(pipe.writeEnd());
        installConsole("%v")->info("x");
        EXPECT_EQ(pipe.readAll(), "INFO [orders] x\n");
    });
}

TEST(ConsoleOnPipe, DoesNotWaitForAFullPipeThatDoesNotBlockAndReportsDrops) {
    support::inFreshProcess([] {
        const Pipe pipe(O_NONBLOCK);
        const RedirectedStandardError redirected(pipe.writeEnd());
        Logger* const logger = installConsole();
        pipe.fill();
        for (int i = 0; i < 3; ++i) {
            logger->info("dropped");
        }
        pipe.readAll();
        logger->info("written");
        EXPECT_EQ(pipe.readAll(), "INFO [orders] written\n"
                                  "ZOL back end Console: works again, lost messages: 3\n")
            << "without a pause, and without an empty line";
    });
}

TEST(ConsoleOnPipe, BeginsANewLineAfterALineThatWasWrittenInPart) {
    support::inFreshProcess([] {
        const Pipe pipe(O_NONBLOCK);
        const RedirectedStandardError redirected(pipe.writeEnd());
        Logger* const logger = installConsole();
        const std::string text(std::size_t{1024} * 1024, 'x');
        const std::string line = "INFO [orders] " + text + "\n";
        logger->info() << text;
        const std::string part = pipe.readAll();
        EXPECT_LT(part.size(), line.size());
        EXPECT_EQ(part, line.substr(0, part.size()));
        pipe.fill();
        logger->info("dropped");
        pipe.readAll();
        logger->info("written");
        logger->info("next");
        EXPECT_EQ(pipe.readAll(), "\nINFO [orders] written\n"
                                  "ZOL back end Console: works again, lost messages: 2\n"
                                  "INFO [orders] next\n");
    });
}

TEST(ConsoleOnPipe, ReportsDropsAfterAPipeWithoutAReader) {
    support::inFreshProcess([] {
        Logger* logger = nullptr;
        {
            int ends[2] = {};
            ASSERT_EQ(pipe(ends), 0);
            const RedirectedStandardError redirected(ends[1]);
            close(ends[0]);
            close(ends[1]);
            logger = installConsole();
            logger->info("dropped");
        }
        const Pipe pipe;
        const RedirectedStandardError redirected(pipe.writeEnd());
        logger->info("written");
        EXPECT_EQ(pipe.readAll(), "INFO [orders] written\n"
                                  "ZOL back end Console: works again, lost messages: 1\n");
    });
}

TEST(ConsoleOnPipe, ReportsDropsAfterAClosedStandardError) {
    support::inFreshProcess([] {
        const Pipe pipe;
        const int saved = dup(STDERR_FILENO);
        close(STDERR_FILENO);
        Logger* const logger = installConsole();
        EXPECT_NO_THROW(logger->info("dropped"));
        dup2(pipe.writeEnd(), STDERR_FILENO);
        logger->info("written");
        EXPECT_EQ(pipe.readAll(), "INFO [orders] written\n"
                                  "ZOL back end Console: works again, lost messages: 1\n");
        dup2(saved, STDERR_FILENO);
        close(saved);
    });
}

TEST(ConsoleOnPipe, WritesALongLineOnceWhileSignalsArrive) {
    support::inFreshProcess([] {
        const Pipe pipe;
        const RedirectedStandardError redirected(pipe.writeEnd());
        Logger* const logger = installConsole();
        std::string text;
        while (text.size() < std::size_t{512} * 1024) {
            text += std::to_string(text.size()) + " ";
        }
        const std::string line = "INFO [orders] " + text + "\n";
        std::string received;
        std::thread reader([&] {
            sigset_t alarm;
            sigemptyset(&alarm);
            sigaddset(&alarm, SIGALRM);
            pthread_sigmask(SIG_BLOCK, &alarm, nullptr); // they are for the writer
            while (received.size() < line.size() && pipe.wait()) {
                std::this_thread::sleep_for(std::chrono::milliseconds(5));
                received += pipe.read();
            }
        });
        {
            const Alarms alarms;
            logger->info() << text;
        }
        reader.join();
        EXPECT_TRUE(received == line) << received.size() << " bytes of " << line.size();
        EXPECT_EQ(pipe.readAll(), "");
    });
}

} // namespace
