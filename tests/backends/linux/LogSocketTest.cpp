#include "linux/LogSocket.h"

#include <atomic>
#include <cerrno>
#include <csignal>
#include <cstdlib>
#include <filesystem>
#include <functional>
#include <future>
#include <memory>
#include <string>
#include <system_error>
#include <thread>
#include <vector>

#include <dlfcn.h>
#include <fcntl.h>
#include <gtest/gtest.h>
#include <poll.h>
#include <unistd.h>

#include "ReopeningSink.h"

#include "ListeningSocket.h"
#include "OpenHandles.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

using Type = ListeningSocket::Type;

/// The time limits of the calls of poll in this program, in milliseconds.
std::vector<int> waits;

/// Whether waits has an element, for other threads.
std::atomic<bool> hasWaited = false;

/// If not 0, each call of poll takes that long and is then interrupted by a signal.
std::chrono::milliseconds interruptedAfter = 0ms;

/// Called after each of these.
std::function<void()> onInterrupt;

constexpr std::size_t recordSize = 1000;

int nextPoll(pollfd* descriptors, nfds_t count, int timeout) {
    static auto* const next = reinterpret_cast<decltype(&poll)>(dlsym(RTLD_NEXT, "poll"));
    return next(descriptors, count, timeout);
}

} // namespace

extern "C" [[gnu::visibility("default")]] int poll(pollfd* fds, nfds_t nfds, int timeout) {
    // volatile: poll is declared to write fds only, so the compiler may drop reads of fds before
    // it.
    const volatile pollfd* const first = fds;
    if (first->events != POLLOUT) {
        return nextPoll(fds, nfds, timeout);
    }
    waits.push_back(timeout);
    hasWaited = true;
    if (interruptedAfter == 0ms) {
        return nextPoll(fds, nfds, timeout);
    }
    std::this_thread::sleep_for(interruptedAfter);
    if (onInterrupt) {
        onInterrupt();
    }
    errno = EINTR;
    return -1;
}

namespace {

class LogSocketTest : public testing::Test {
protected:
    LogSocketTest() {
        waits.clear();
        hasWaited = false;
        interruptedAfter = 0ms;
        onInterrupt = nullptr;
    }
    ~LogSocketTest() override { fs::remove_all(folder_); }

    /// Sends until the service accepts no more, and returns the records that were sent.
    static int fill(LogSocket& socket) {
        const std::string record(recordSize, 'x');
        for (int sent = 0;; ++sent) {
            try {
                socket.send(record);
            } catch (const SinkTimeout&) {
                return sent;
            }
        }
    }

    std::string path() const { return (folder_ / "log").string(); }

private:
    static fs::path makeFolder() {
        std::string name = (fs::temp_directory_path() / "zol-test-XXXXXX").string();
        EXPECT_NE(mkdtemp(name.data()), nullptr);
        return name;
    }

    fs::path folder_ = makeFolder();
};

TEST_F(LogSocketTest, SendsDatagramsAsTheyAre) {
    const ListeningSocket service(path());
    LogSocket socket(path());
    socket.send("first");
    socket.send("second");
    EXPECT_EQ(service.receive(), "first");
    EXPECT_EQ(service.receive(), "second");
}

TEST_F(LogSocketTest, EndsEachRecordOnAStreamWithAZeroByte) {
    ListeningSocket service(path(), Type::stream);
    LogSocket socket(path());
    service.accept();
    socket.send("first");
    socket.send("second");
    using namespace std::string_literals;
    EXPECT_EQ(service.receive(), "first\0second\0"s);
}

TEST_F(LogSocketTest, SendsARecordInPartsToAStreamThatIsReadSlowly) {
    ListeningSocket service(path(), Type::stream);
    LogSocket socket(path());
    service.accept();
    std::string text;
    while (text.size() < std::size_t{512} * 1024) { // more than the socket holds
        text += std::to_string(text.size()) + " ";
    }
    auto reader = std::async(std::launch::async, [&service] {
        for (int i = 0; !hasWaited && i < 10000; ++i) {
            std::this_thread::sleep_for(1ms);
        }
        std::string received;
        for (std::string part = service.receive(); !part.empty(); part = service.receive()) {
            received += part;
            if (received.back() == '\0') {
                break;
            }
        }
        return received;
    });
    socket.send(text);
    const std::string received = reader.get();
    text += '\0';
    EXPECT_TRUE(received == text) << received.size() << " bytes of " << text.size();
    EXPECT_TRUE(hasWaited) << "it was sent at once";
}

class LogSocketTypesTest : public LogSocketTest, public testing::WithParamInterface<Type> {};

TEST_P(LogSocketTypesTest, WaitsForOneTimeoutHoweverManySignalsArrive) {
    const ListeningSocket service(path(), GetParam());
    LogSocket socket(path());
    EXPECT_GT(fill(socket), 0);
    ASSERT_FALSE(waits.empty());
    EXPECT_GT(waits.front(), 0);
    EXPECT_LE(waits.front(), 100);
    waits.clear();
    interruptedAfter = 40ms;
    EXPECT_THROW(socket.send("dropped"), SinkTimeout);
    ASSERT_FALSE(waits.empty());
    EXPECT_LE(waits.size(), 3U);
    for (std::size_t i = 0; i < waits.size(); ++i) {
        EXPECT_LE(waits[i], 100 - 40 * static_cast<int>(i));
    }
}

TEST_P(LogSocketTypesTest, ContinuesAnInterruptedWait) {
    ListeningSocket service(path(), GetParam());
    LogSocket socket(path());
    if (GetParam() == Type::stream) {
        service.accept();
    }
    const int records = fill(socket);
    // Room for one datagram is enough; a stream is writable when most of it is read.
    const int read = GetParam() == Type::stream ? records : 1;
    onInterrupt = [&] {
        for (std::size_t size = 0; size < recordSize * static_cast<std::size_t>(read);) {
            size += service.receive().size();
        }
        interruptedAfter = 0ms;
    };
    interruptedAfter = 1ms;
    EXPECT_NO_THROW(socket.send("written"));
}

TEST_P(LogSocketTypesTest, ConnectsAgainToAServiceThatWasRestarted) {
    auto service = std::make_unique<ListeningSocket>(path(), GetParam());
    LogSocket socket(path());
    if (GetParam() == Type::stream) {
        service->accept();
    }
    socket.send("first");
    EXPECT_NE(service->receive(), "");
    for (const Type type : {GetParam(), Type::stream, Type::datagram}) {
        service.reset();
        service = std::make_unique<ListeningSocket>(path(), type);
        socket.send("second");
        if (type == Type::stream) {
            service->accept();
        }
        EXPECT_EQ(service->receive(),
                  type == Type::stream ? std::string("second") + '\0' : "second");
    }
}

TEST_P(LogSocketTypesTest, RaisesNoSignalIfTheServiceHasEnded) {
    auto service = std::make_unique<ListeningSocket>(path(), GetParam());
    LogSocket socket(path());
    service.reset();
    EXPECT_THROW(socket.send("dropped"), std::system_error); // SIGPIPE would end the process
}

TEST_P(LogSocketTypesTest, LeaksNoSocket) {
    const std::size_t before = support::openHandles();
    auto service = std::make_unique<ListeningSocket>(path(), GetParam());
    {
        LogSocket socket(path());
        EXPECT_EQ(support::openHandles(), before + 2);
        service.reset();
        EXPECT_THROW(socket.send("dropped"), std::system_error);
        EXPECT_EQ(support::openHandles(), before);
        service = std::make_unique<ListeningSocket>(path(), GetParam());
        socket.send("x");
        EXPECT_EQ(support::openHandles(), before + 2);
    }
    service.reset();
    EXPECT_THROW(LogSocket{path()}, std::system_error) << "no such file";
    fs::create_directory(path());
    EXPECT_THROW(LogSocket{path()}, std::system_error) << "not a socket";
    EXPECT_EQ(support::openHandles(), before);
}

INSTANTIATE_TEST_SUITE_P(, LogSocketTypesTest, testing::Values(Type::datagram, Type::stream),
                         [](const auto& test) {
                             return test.param == Type::stream ? "Stream" : "Datagram";
                         });

TEST_F(LogSocketTest, DoesNotWaitForAServiceThatAcceptsNoConnection) {
    const ListeningSocket service(path(), Type::stream, 0);
    std::vector<std::unique_ptr<LogSocket>> sockets;
    const std::size_t before = support::openHandles();
    EXPECT_THROW(
        for (;;) { sockets.push_back(std::make_unique<LogSocket>(path())); }, std::system_error);
    EXPECT_EQ(support::openHandles(), before + sockets.size());
    EXPECT_TRUE(waits.empty());
}

TEST_P(LogSocketTypesTest, IsClosedOnExec) {
    const ListeningSocket service(path(), GetParam());
    const int before = dup(STDERR_FILENO); // the next descriptor of this process is that one
    close(before);
    const LogSocket socket(path());
    EXPECT_EQ(fcntl(before, F_GETFD), FD_CLOEXEC);
}

TEST_F(LogSocketTest, NamesTheSocketInItsErrors) {
    try {
        const LogSocket socket(path());
        FAIL();
    } catch (const std::system_error& error) {
        EXPECT_EQ(error.what(), path() + ": No such file or directory");
    }
}

} // namespace
