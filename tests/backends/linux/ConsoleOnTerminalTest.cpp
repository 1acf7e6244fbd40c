// The Console back end on a terminal, and on a standard error that cannot be written.

#include <array>
#include <cerrno>
#include <cstdlib>
#include <cstring>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <pty.h>
#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshProcess.h"
#include "Property.h"
#include "RedirectedStandardError.h"

using namespace ZOL::Framework::GenericLogger;

namespace {

/// Opens a pseudo-terminal; mounts /dev/pts if it is missing, as in a new chroot.
bool openTerminal(int& master, int& slave) {
    if (openpty(&master, &slave, nullptr, nullptr, nullptr) == 0) {
        return true;
    }
    if (unshare(CLONE_NEWNS) != 0 ||
        mount("devpts", "/dev/pts", "devpts", 0, "newinstance,ptmxmode=0666") != 0) {
        return false;
    }
    master = open("/dev/pts/ptmx", O_RDWR | O_NOCTTY);
    if (master == -1 || unlockpt(master) != 0) {
        return false;
    }
    slave = open(ptsname(master), O_RDWR | O_NOCTTY);
    return slave != -1;
}

TEST(ConsoleOnTerminal, HasDifferentColoursForLevels) {
    int master = -1;
    int slave = -1;
    ASSERT_TRUE(openTerminal(master, slave)) << std::strerror(errno);
    setenv("TERM", "xterm", 1);
    {
        const RedirectedStandardError terminal(slave);
        LoggerBackend* const console = Logger::installBackend("Console");
        Logger::getLogger("orders")->error("red");
        Logger::getLogger("orders")->info("green");
        Logger::uninstallBackend(console);
    }
    // The terminal passes the output on in pieces, and with a delay.
    std::string text;
    std::array<char, 4096> buffer{};
    while (text.find("green\x1b[") == std::string::npos) {
        pollfd arrived{master, POLLIN, 0};
        ASSERT_EQ(poll(&arrived, 1, 10000), 1) << "received only: " << text;
        const ssize_t size = read(master, buffer.data(), buffer.size());
        ASSERT_GT(size, 0);
        text.append(buffer.data(), static_cast<std::size_t>(size));
    }

    const auto colourBefore = [&text](const std::string& piece) {
        const std::size_t end = text.find(piece);
        const std::size_t begin = text.rfind("\x1b[", end);
        return begin == std::string::npos ? "" : text.substr(begin, end - begin);
    };
    EXPECT_NE(colourBefore("ERROR [orders] red"), "") << text;
    EXPECT_NE(colourBefore("INFO [orders] green"), "") << text;
    EXPECT_NE(colourBefore("ERROR [orders] red"), colourBefore("INFO [orders] green"));
    EXPECT_NE(text.find("red\x1b["), std::string::npos) << "the colour ends with the line";
    close(master);
    close(slave);
}

/// What a message looks like on a terminal of that type.
std::string lineOnTerminal(const char* type) {
    int master = -1;
    int slave = -1;
    EXPECT_TRUE(openTerminal(master, slave)) << std::strerror(errno);
    setenv("TERM", type, 1);
    unsetenv("COLORTERM");
    {
        const RedirectedStandardError terminal(slave);
        setProperty("Console.pattern", "%^%v%$");
        Logger::installBackend("Console");
        Logger::getLogger("orders")->info("x");
    }
    std::string text;
    pollfd arrived{master, POLLIN, 0};
    while (text.find('\n') == std::string::npos && poll(&arrived, 1, 10000) == 1) {
        std::array<char, 4096> buffer{};
        const ssize_t size = read(master, buffer.data(), buffer.size());
        text.append(buffer.data(), size > 0 ? static_cast<std::size_t>(size) : 0);
    }
    close(master);
    close(slave);
    return text;
}

TEST(ConsoleOnTerminal, HasColoursIfTheTerminalHas) {
    support::inFreshProcess(
        [] { EXPECT_EQ(lineOnTerminal("xterm"), "\x1b[32mINFO [orders] x\x1b[m\r\n"); });
}

TEST(ConsoleOnTerminal, HasNoColoursIfTheTerminalHasNone) {
    support::inFreshProcess([] { EXPECT_EQ(lineOnTerminal("dumb"), "INFO [orders] x\r\n"); });
}

TEST(ConsoleOnTerminal, HasNoColoursIfColourIsNever) {
    support::inFreshProcess([] {
        setProperty("Console.colour", "never");
        EXPECT_EQ(lineOnTerminal("xterm"), "INFO [orders] x\r\n");
    });
}

TEST(ConsoleOnTerminal, ThrowsNothingIfStandardErrorCannotBeWritten) {
    const int full = open("/dev/full", O_WRONLY);
    ASSERT_NE(full, -1);
    {
        const RedirectedStandardError fullDevice(full);
        LoggerBackend* const console = Logger::installBackend("Console");
        EXPECT_NO_THROW(Logger::getLogger("orders")->error("dropped"));
        Logger::uninstallBackend(console);
    }
    close(full);
}

TEST(ConsoleOnTerminal, ColoursFilesTooIfColourIsAlways) {
    support::inFreshProcess([] {
        setProperty("Console.colour", "always");
        testing::internal::CaptureStderr();
        Logger::installBackend("Console");
        Logger::getLogger("orders")->error("red");
        const std::string text = testing::internal::GetCapturedStderr();
        EXPECT_NE(text.find("\x1b["), std::string::npos) << text;
    });
}

} // namespace
