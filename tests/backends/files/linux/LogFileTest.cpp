#include "files/LogFile.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <string>
#include <thread>
#include <utility>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <pthread.h>
#include <sys/resource.h>
#include <sys/socket.h>
#include <sys/stat.h>
#include <sys/un.h>
#include <unistd.h>

#include "ClosedStreams.h"
#include "FreshFolder.h"
#include "OpenDescriptors.h"
#include "linux/PrivateMounts.h"
#include "linux/Signals.h"

using ZOL::Backends::LogFile;
using ZOL::Backends::LogFileError;
namespace fs = std::filesystem;

namespace {

constexpr const char* name = "zol.log";
/// After which a call that blocks ends the process.
constexpr unsigned secondsToBlock = 20;

std::string refusalOf(const fs::path& path) {
    try {
        const LogFile file(path);
    } catch (const LogFileError& error) {
        return error.what();
    }
    return "no refusal";
}

std::string failureOf(LogFile& file, const std::string& line) {
    try {
        file.append(line);
    } catch (const LogFileError& error) {
        return error.what();
    }
    return "no failure";
}

mode_t modeOf(const char* path) {
    struct stat status = {};
    EXPECT_EQ(stat(path, &status), 0);
    return status.st_mode & 07777U;
}

void limitFiles(rlim_t size) {
    rlimit limit = {};
    ASSERT_EQ(getrlimit(RLIMIT_FSIZE, &limit), 0);
    limit.rlim_cur = size;
    ASSERT_EQ(setrlimit(RLIMIT_FSIZE, &limit), 0);
}

TEST(LogFileOnLinux, IsRefusedIfItIsASymbolicLink) {
    inFreshFolder([] {
        std::ofstream("target") << "text";
        fs::create_symlink("target", name);
        EXPECT_EQ(refusalOf(name), "zol.log is a symbolic link and not a regular file");
        EXPECT_EQ(textOf("target"), "text");
        EXPECT_TRUE(descriptorsOf("target").empty());
    });
}

TEST(LogFileOnLinux, CreatesNothingAtTheTargetOfADanglingLink) {
    inFreshFolder([] {
        fs::create_symlink("target", name);
        EXPECT_EQ(refusalOf(name), "zol.log is a symbolic link and not a regular file");
        EXPECT_FALSE(fs::exists("target"));
    });
}

TEST(LogFileOnLinux, IsRefusedAtOnceIfItIsAFifo) {
    inFreshFolder([] {
        ASSERT_EQ(mkfifo(name, 0600), 0);
        alarm(secondsToBlock);
        EXPECT_EQ(refusalOf(name), "zol.log is a FIFO and not a regular file");
        alarm(0);
    });
}

TEST(LogFileOnLinux, IsRefusedIfItIsAFifoWithAReader) {
    inFreshFolder([] {
        ASSERT_EQ(mkfifo(name, 0600), 0);
        const int reader = open(name, O_RDONLY | O_NONBLOCK | O_CLOEXEC);
        ASSERT_NE(reader, -1);
        EXPECT_EQ(refusalOf(name), "zol.log is a FIFO and not a regular file");
        EXPECT_EQ(descriptorsOf(name).size(), 1U) << "the reader's alone";
        close(reader);
    });
}

TEST(LogFileOnLinux, IsRefusedIfItIsASocket) {
    inFreshFolder([] {
        const int socket = ::socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0);
        sockaddr_un address = {};
        address.sun_family = AF_UNIX;
        std::string(name).copy(address.sun_path, sizeof(address.sun_path) - 1);
        ASSERT_EQ(bind(socket, reinterpret_cast<sockaddr*>(&address), sizeof(address)), 0);
        EXPECT_EQ(refusalOf(name), "zol.log is a socket and not a regular file");
        close(socket);
    });
}

TEST(LogFileOnLinux, IsRefusedIfItIsADevice) {
    EXPECT_EQ(refusalOf("/dev/null"), "/dev/null is a device and not a regular file");
}

TEST(LogFileOnLinux, IsNotAtItsPathIfALinkToItIsThere) {
    inFreshFolder([] {
        const LogFile file(name);
        fs::rename(name, "zol.1.log");
        fs::create_symlink("zol.1.log", name);
        EXPECT_FALSE(file.isAtItsPath()) << "a link to the file is not the file";
    });
}

TEST(LogFileOnLinux, HasDefaultPermissionsLessTheUmask) {
    inFreshFolder([] {
        using MaskAndMode = std::pair<mode_t, mode_t>;
        for (const auto& [mask, mode] :
             {MaskAndMode(0, 0640), MaskAndMode(022, 0640), MaskAndMode(027, 0640),
              MaskAndMode(077, 0600), MaskAndMode(0777, 0)}) {
            umask(mask);
            const LogFile file(name);
            EXPECT_EQ(modeOf(name), mode) << "with the umask " << mask;
            fs::remove(name);
        }
    });
}

TEST(LogFileOnLinux, HasExactlyTheGivenPermissions) {
    inFreshFolder([] {
        for (const mode_t mask : {0U, 022U, 077U, 0777U}) {
            for (const unsigned mode : {0600U, 0644U, 0664U, 0666U}) {
                umask(mask);
                const LogFile file(name, mode);
                EXPECT_EQ(modeOf(name), mode) << "with the umask " << mask;
                fs::remove(name);
            }
        }
    });
}

TEST(LogFileOnLinux, KeepsThePermissionsOfAnExistingFile) {
    inFreshFolder([] {
        std::ofstream(name) << "text\n";
        ASSERT_EQ(chmod(name, 0604), 0);
        for (const std::optional<unsigned> mode : {std::optional<unsigned>(), {0660U}}) {
            const LogFile file(name, mode);
            EXPECT_EQ(modeOf(name), 0604U);
        }
    });
}

TEST(LogFileOnLinux, IsClosedOnExec) {
    inFreshFolder([] {
        for (const char* const how : {"created", "opened"}) {
            const LogFile file(name);
            const auto descriptors = descriptorsOf(name);
            ASSERT_EQ(descriptors.size(), 1U) << how;
            EXPECT_EQ(fcntl(descriptors[0], F_GETFD), FD_CLOEXEC) << how;
        }
    });
}

TEST(LogFileOnLinux, LiesAboveClosedStandardStreams) {
    inFreshFolder([] {
        std::optional<ClosedStreams> closed(std::in_place);
        LogFile file(name);
        closed.reset();
        const auto descriptors = descriptorsOf(name);
        ASSERT_EQ(descriptors.size(), 1U);
        EXPECT_GT(descriptors[0], STDERR_FILENO);
        EXPECT_EQ(fcntl(descriptors[0], F_GETFD), FD_CLOEXEC);
        file.append("line\n");
        EXPECT_EQ(textOf(name), "line\n");
    });
}

TEST(LogFileOnLinux, IsClosedWithItsObject) {
    inFreshFolder([] {
        std::ofstream(name) << "torn";
        {
            const LogFile file(name);
            EXPECT_EQ(descriptorsOf(name).size(), 1U);
        }
        EXPECT_TRUE(descriptorsOf(name).empty());
    });
}

TEST(LogFileOnLinux, DoesNotEndACancelledThreadWithinALine) {
    inFreshFolder([] {
        LogFile file(name);
        bool hasReturned = false;
        std::thread([&] {
            pthread_cancel(pthread_self());
            file.append("a line\n");
            hasReturned = true;
            pthread_testcancel();
            ADD_FAILURE() << "it was not cancelled";
        }).join();
        EXPECT_TRUE(hasReturned);
        EXPECT_EQ(textOf(name), "a line\n");
    });
}

TEST(LogFileOnLinux, OnAFullDiskKeepsEachOtherLineWhole) {
    inFreshFolder([] {
        constexpr int maxLines = 100;
        const std::string path = "disk/zol.log";
        const auto line = [](int number) {
            return "line " + std::to_string(number) + std::string(1000, '.') + "\n";
        };
        fs::create_directory("disk");
        support::leaveTheMachinesMounts();
        support::mountMemory("disk", "size=64k");
        LogFile file(path);
        file.append(line(0));
        std::ofstream("disk/filler") << std::string(std::size_t{48} * 1024, 'x');
        std::string expected = line(0);
        int number = 1;
        std::string failure = failureOf(file, line(number));
        for (; failure == "no failure" && number < maxLines;
             failure = failureOf(file, line(number))) {
            expected += line(number);
            ++number;
        }
        EXPECT_EQ(failure, "cannot write to disk/zol.log: No space left on device");
        ASSERT_GT(file.size(), expected.size()) << "the disk took nothing of the last line";
        const std::size_t taken = file.size() - expected.size();
        ASSERT_LT(taken, line(number).size());
        EXPECT_EQ(fs::file_size(path), file.size());
        expected += line(number).substr(0, taken);

        EXPECT_EQ(failureOf(file, "x\n"), failure);
        EXPECT_EQ(file.size(), expected.size()) << "nothing was taken";
        EXPECT_EQ(textOf(path), expected);

        fs::remove("disk/filler");
        file.append("there is room again\n");
        file.append("and again\n");
        EXPECT_EQ(textOf(path), expected + "\nthere is room again\nand again\n");
        EXPECT_EQ(fs::file_size(path), file.size());
    });
}

TEST(LogFileOnLinux, BeyondTheSizeLimitOfTheProcessIsAnError) {
    inFreshFolder([] {
        const BlockedSignal blocked(SIGXFSZ);
        LogFile file(name);
        limitFiles(10);
        file.append("first\n");
        const std::string failure = failureOf(file, "fits in part\n");
        const std::string next = failureOf(file, "dropped\n");
        limitFiles(RLIM_INFINITY);
        EXPECT_EQ(failure, "cannot write to zol.log: File too large");
        EXPECT_EQ(next, failure);
        EXPECT_EQ(file.size(), 10U);
        file.append("written\n");
        EXPECT_EQ(textOf(name), "first\nfits\nwritten\n");
    });
}

TEST(LogFileOnLinux, WhoseDescriptorTheHostClosedIsNotAtItsPath) {
    inFreshFolder([] {
        const LogFile file(name);
        const auto descriptors = descriptorsOf(name);
        ASSERT_EQ(descriptors.size(), 1U);
        EXPECT_TRUE(file.isAtItsPath());
        close(descriptors[0]);
        EXPECT_FALSE(file.isAtItsPath());
    });
}

TEST(LogFileOnLinux, DoesNotCloseADescriptorThatTheHostUsesForAnotherFile) {
    inFreshFolder([] {
        const int other = open("other", O_CREAT | O_WRONLY | O_CLOEXEC, 0600);
        int descriptor = -1;
        {
            const LogFile file(name);
            const auto descriptors = descriptorsOf(name);
            ASSERT_EQ(descriptors.size(), 1U);
            descriptor = descriptors[0];
            ASSERT_EQ(dup2(other, descriptor), descriptor);
            EXPECT_FALSE(file.isAtItsPath());
        }
        EXPECT_NE(fcntl(descriptor, F_GETFD), -1) << "the host's file was closed";
        close(descriptor);
        close(other);
    });
}

TEST(LogFileOnLinux, SeesADeletion) {
    EXPECT_FALSE(LogFile::isDeletionHidden());
}

} // namespace
