// What is not a regular file in place of a log: at the start, and put there between two lines. The
// clock is moved instead of waiting.

#include <cerrno>
#include <ctime>
#include <filesystem>
#include <fstream>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"
#include "Property.h"
#include "TestClock.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

constexpr const char* name = "zol.log";
/// After which a call that blocks ends the process.
constexpr unsigned secondsToBlock = 20;

/// Something in place of the log.
class Planted {
public:
    Planted() = default;
    Planted(const Planted&) = delete;
    Planted& operator=(const Planted&) = delete;
    virtual ~Planted() = default;

    virtual const char* kind() const = 0;
    virtual void plant() = 0;
    virtual void expectUnchanged() const = 0;
};

class PlantedLink : public Planted {
public:
    const char* kind() const override { return "a symbolic link"; }
    void plant() override {
        std::ofstream("important.txt") << "text";
        fs::create_symlink("important.txt", name);
    }
    void expectUnchanged() const override {
        EXPECT_EQ(fs::read_symlink(name), "important.txt");
        EXPECT_EQ(textOf("important.txt"), "text");
    }
};

class PlantedDanglingLink : public Planted {
public:
    const char* kind() const override { return "a symbolic link"; }
    void plant() override { fs::create_symlink("missing.txt", name); }
    void expectUnchanged() const override {
        EXPECT_EQ(fs::read_symlink(name), "missing.txt");
        EXPECT_FALSE(fs::exists("missing.txt"));
    }
};

class PlantedFifo : public Planted {
public:
    const char* kind() const override { return "a FIFO"; }
    void plant() override { ASSERT_EQ(mkfifo(name, 0600), 0); }
    void expectUnchanged() const override { EXPECT_TRUE(fs::is_fifo(fs::symlink_status(name))); }
};

class PlantedFifoWithReader : public PlantedFifo {
public:
    ~PlantedFifoWithReader() override { close(reader_); }
    void plant() override {
        PlantedFifo::plant();
        reader_ = open(name, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        ASSERT_NE(reader_, -1);
    }
    void expectUnchanged() const override {
        PlantedFifo::expectUnchanged();
        char byte = 0;
        EXPECT_EQ(read(reader_, &byte, 1), 0) << "nobody has it open, and nothing is in it";
    }

private:
    int reader_ = -1;
};

class PlantedFolder : public Planted {
public:
    const char* kind() const override { return "a folder"; }
    void plant() override {
        fs::create_directory(name);
        std::ofstream("zol.log/important.txt") << "text";
    }
    void expectUnchanged() const override { EXPECT_EQ(textOf("zol.log/important.txt"), "text"); }
};

class PlantedSocket : public Planted {
public:
    ~PlantedSocket() override { close(socket_); }
    const char* kind() const override { return "a socket"; }
    void plant() override {
        socket_ = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC | SOCK_NONBLOCK, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::string(name).copy(address.sun_path, sizeof(address.sun_path) - 1);
        ASSERT_EQ(bind(socket_, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
    }
    void expectUnchanged() const override {
        EXPECT_TRUE(fs::is_socket(fs::symlink_status(name)));
        char byte = 0;
        EXPECT_EQ(recv(socket_, &byte, 1, 0), -1);
        EXPECT_EQ(errno, EAGAIN);
    }

private:
    int socket_ = -1;
};

void passASecond() {
    timespec now{};
    clock_gettime(CLOCK_REALTIME, &now);
    support::TestClock::set(now.tv_sec + 1);
}

void logLine(const char* text) {
    Logger::getLogger("orders")->info(text);
}

template <class T>
class PlantedFiles : public testing::Test {
protected:
    /// Logs beside what is planted, removes it, and logs a second later.
    void expectWorkAfterRemoval() {
        logLine("dropped");
        passASecond();
        logLine("dropped");
        logLine("dropped");
        planted_.expectUnchanged();
        fs::remove_all(name);
        passASecond();
        logLine("written");
        EXPECT_EQ(textOf(name), "INFO [orders] written\n");
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  std::string("ZOL back end RotatingFile: messages are being lost: zol.log is ") +
                      planted_.kind() +
                      " and not a regular file\n"
                      "ZOL back end RotatingFile: works again, lost messages: 3\n");
    }

    void install() {
        alarm(secondsToBlock);
        setProperty("RotatingFile.pattern", "%v");
        testing::internal::CaptureStderr();
        Logger::installBackend("RotatingFile");
    }

    T planted_;
};

using Kinds = testing::Types<PlantedLink, PlantedDanglingLink, PlantedFifo, PlantedFifoWithReader,
                             PlantedFolder, PlantedSocket>;
TYPED_TEST_SUITE(PlantedFiles, Kinds, );

TYPED_TEST(PlantedFiles, AreRefusedAndTheirRemovalNoticed) {
    inFreshFolder([this] {
        this->planted_.plant();
        this->install();
        this->expectWorkAfterRemoval();
    });
}

TYPED_TEST(PlantedFiles, BetweenTwoLinesAreRefusedAndTheirRemovalNoticed) {
    inFreshFolder([this] {
        this->install();
        logLine("before");
        fs::rename(name, "moved.log");
        this->planted_.plant();
        passASecond(); // until the path is looked at
        this->expectWorkAfterRemoval();
        EXPECT_EQ(textOf("moved.log"), "INFO [orders] before\n");
    });
}

TYPED_TEST(PlantedFiles, AtARotationAreRefusedAndTheirRemovalNoticed) {
    inFreshFolder([this] {
        setProperty("RotatingFile.size", "22");
        this->install();
        logLine("before");
        fs::rename(name, "moved.log");
        this->planted_.plant();
        this->expectWorkAfterRemoval(); // the first line does not fit into the file
        EXPECT_EQ(textOf("moved.log"), "INFO [orders] before\n");
    });
}

} // namespace
