#include "files/GzipFile.h"

#include <csignal>
#include <filesystem>
#include <fstream>
#include <optional>
#include <random>
#include <string>
#include <vector>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/resource.h>
#include <sys/stat.h>
#include <unistd.h>

#include "files/LogFile.h"

#include "ChildProcess.h"
#include "ClosedStreams.h"
#include "FreshFolder.h"
#include "OpenDescriptors.h"
#include "linux/PrivateMounts.h"
#include "linux/Signals.h"

using ZOL::Backends::gzipFile;
using ZOL::Backends::isGzipOf;
using ZOL::Backends::LogFileError;
namespace fs = std::filesystem;

namespace {

constexpr const char* source = "zol.1.log";
constexpr const char* target = "zol.1.log.gz";
constexpr std::size_t megabyte = std::size_t{1} << 20U;
/// After which a call that blocks ends the process.
constexpr unsigned secondsToBlock = 20;

void putNoise(const fs::path& path, std::size_t size) {
    std::mt19937 random;
    std::ofstream file(path, std::ios::binary);
    for (std::size_t i = 0; i < size; ++i) {
        file.put(static_cast<char>(random()));
    }
}

std::string failureOf(const fs::path& from, const fs::path& to) {
    try {
        static_cast<void>(gzipFile(from, to, {}));
    } catch (const LogFileError& error) {
        return error.what();
    }
    return "no failure";
}

struct stat statusOf(const char* path) {
    struct stat status = {};
    EXPECT_EQ(lstat(path, &status), 0) << path;
    return status;
}

int exitCodeOf(const std::string& command) {
    return support::ChildProcess({"/bin/sh", "-c", command}).wait();
}

void limit(decltype(RLIMIT_FSIZE) resource, rlim_t value) {
    rlimit limit = {};
    ASSERT_EQ(getrlimit(resource, &limit), 0);
    limit.rlim_cur = value;
    ASSERT_EQ(setrlimit(resource, &limit), 0);
}

struct Descriptors {
    std::vector<int> numbers;
    std::vector<int> flags;
};

/// Those of the source and of the new file.
Descriptors descriptorsWhileCompressing() {
    Descriptors used;
    EXPECT_TRUE(gzipFile(source, target, [&used] {
        used = {};
        for (const char* const file : {source, target}) {
            for (const int descriptor : descriptorsOf(file)) {
                used.numbers.push_back(descriptor);
                used.flags.push_back(fcntl(descriptor, F_GETFD));
            }
        }
        return false;
    }));
    return used;
}

TEST(GzipFileOnLinux, CanBeReadByGzip) {
    inFreshFolder([] {
        for (const std::size_t size : {std::size_t{0}, std::size_t{1}, 5 * megabyte}) {
            putNoise(source, size);
            EXPECT_TRUE(gzipFile(source, target, {}));
            EXPECT_EQ(exitCodeOf("gzip -t zol.1.log.gz"), 0) << "of " << size << " bytes";
            EXPECT_EQ(exitCodeOf("zcat zol.1.log.gz | cmp - zol.1.log"), 0)
                << "of " << size << " bytes";
            fs::remove(target);
        }
    });
}

TEST(GzipFileOnLinux, IsRestoredByGzipUnderItsNameWithItsTime) {
    inFreshFolder([] {
        putNoise(source, 1000);
        fs::last_write_time(source, fs::last_write_time(source) - std::chrono::hours(50));
        EXPECT_TRUE(gzipFile(source, "another.gz", {}));
        fs::rename(source, "original");
        EXPECT_EQ(exitCodeOf("gzip -dN another.gz && cmp zol.1.log original"), 0);
        EXPECT_EQ(statusOf(source).st_mtim.tv_sec, statusOf("original").st_mtim.tv_sec);
    });
}

TEST(GzipFileOnLinux, OfASymbolicLinkIsRefused) {
    inFreshFolder([] {
        std::ofstream("linked") << "text";
        fs::create_symlink("linked", source);
        EXPECT_EQ(failureOf(source, target), "zol.1.log is a symbolic link and not a regular file");
        EXPECT_FALSE(fs::exists(target));
        EXPECT_TRUE(descriptorsOf("linked").empty());

        EXPECT_TRUE(gzipFile("linked", "linked.gz", {}));
        fs::create_symlink("linked.gz", target);
        EXPECT_TRUE(isGzipOf("linked.gz", 4));
        EXPECT_FALSE(isGzipOf(target, 4)) << "through a link";
    });
}

TEST(GzipFileOnLinux, OfAFifoIsRefusedAtOnce) {
    inFreshFolder([] {
        ASSERT_EQ(mkfifo(source, 0600), 0);
        alarm(secondsToBlock);
        EXPECT_EQ(failureOf(source, target), "zol.1.log is a FIFO and not a regular file");
        alarm(0);
        EXPECT_FALSE(fs::exists(target));
        EXPECT_TRUE(descriptorsOf(source).empty());
    });
}

TEST(GzipFileOnLinux, IsNotCreatedThroughADanglingLink) {
    inFreshFolder([] {
        std::ofstream(source) << "text";
        fs::create_symlink("elsewhere", target);
        EXPECT_EQ(failureOf(source, target), "cannot create zol.1.log.gz: File exists");
        EXPECT_TRUE(fs::is_symlink(target));
        EXPECT_FALSE(fs::exists("elsewhere"));
    });
}

TEST(GzipFileOnLinux, HasExactlyThePermissionsOfItsSource) {
    inFreshFolder([] {
        std::ofstream(source) << "text";
        for (const mode_t mask : {0U, 022U, 0777U}) {
            for (const mode_t mode : {0400U, 0600U, 0604U, 0640U, 0666U}) {
                umask(mask);
                ASSERT_EQ(chmod(source, mode), 0);
                EXPECT_TRUE(gzipFile(source, target, {}));
                EXPECT_EQ(statusOf(target).st_mode, S_IFREG | mode) << "with the umask " << mask;
                EXPECT_EQ(statusOf(source).st_mode, S_IFREG | mode);
                fs::remove(target);
            }
        }
    });
}

TEST(GzipFileOnLinux, HasThePermissionsOfItsSourceBeforeItHoldsAnything) {
    inFreshFolder([] {
        umask(0);
        std::ofstream(source) << "text";
        ASSERT_EQ(chmod(source, 0600), 0);
        std::vector<mode_t> modes;
        EXPECT_TRUE(gzipFile(source, target, [&modes] {
            modes.push_back(statusOf(target).st_mode);
            return false;
        }));
        EXPECT_EQ(modes, std::vector<mode_t>(2, S_IFREG | 0600U));
    });
}

TEST(GzipFileOnLinux, HasTheTimeOfItsSourceToTheNanosecond) {
    inFreshFolder([] {
        std::ofstream(source) << "text";
        const timespec times[] = {{1600000000, 1}, {1700000000, 123456789}};
        ASSERT_EQ(utimensat(AT_FDCWD, source, times, 0), 0);
        EXPECT_TRUE(gzipFile(source, target, {}));
        EXPECT_EQ(statusOf(target).st_mtim.tv_sec, times[1].tv_sec);
        EXPECT_EQ(statusOf(target).st_mtim.tv_nsec, times[1].tv_nsec);
    });
}

TEST(GzipFileOnLinux, OnAFullDiskIsRemoved) {
    inFreshFolder([] {
        fs::create_directory("disk");
        support::leaveTheMachinesMounts();
        support::mountMemory("disk", "size=256k");
        putNoise(source, megabyte);
        EXPECT_EQ(failureOf(source, "disk/zol.gz"),
                  "cannot write to disk/zol.gz: No space left on device");
        EXPECT_TRUE(fs::is_empty("disk"));
        EXPECT_EQ(fs::file_size(source), megabyte);
        EXPECT_TRUE(descriptorsOf(source).empty());

        putNoise(source, 1000);
        EXPECT_TRUE(gzipFile(source, "disk/zol.gz", {})) << "there is room for this one";
    });
}

TEST(GzipFileOnLinux, BeyondTheSizeLimitOfTheProcessIsRemoved) {
    inFreshFolder([] {
        putNoise(source, megabyte);
        const BlockedSignal blocked(SIGXFSZ);
        limit(RLIMIT_FSIZE, megabyte / 2);
        const std::string failure = failureOf(source, target);
        limit(RLIMIT_FSIZE, RLIM_INFINITY);
        EXPECT_EQ(failure, "cannot write to zol.1.log.gz: File too large");
        EXPECT_FALSE(fs::exists(target));
    });
}

TEST(GzipFileOnLinux, AndItsSourceAreClosedOnExec) {
    inFreshFolder([] {
        putNoise(source, 1000);
        const auto used = descriptorsWhileCompressing();
        EXPECT_EQ(used.flags, std::vector<int>(2, FD_CLOEXEC));
        EXPECT_TRUE(descriptorsOf(source).empty());
        EXPECT_TRUE(descriptorsOf(target).empty());
    });
}

TEST(GzipFileOnLinux, AndItsSourceLieAboveClosedStandardStreams) {
    inFreshFolder([] {
        putNoise(source, 1000);
        std::optional<ClosedStreams> closed(std::in_place);
        const auto used = descriptorsWhileCompressing();
        closed.reset();
        ASSERT_EQ(used.numbers.size(), 2U);
        EXPECT_GT(used.numbers[0], STDERR_FILENO);
        EXPECT_GT(used.numbers[1], STDERR_FILENO);
        EXPECT_EQ(used.flags, std::vector<int>(2, FD_CLOEXEC));
        EXPECT_TRUE(descriptorsOf(source).empty());
        EXPECT_TRUE(descriptorsOf(target).empty());
    });
}

TEST(GzipFileOnLinux, IsRemovedIfNoDescriptorAboveTheStandardStreamsIsLeft) {
    inFreshFolder([] {
        putNoise(source, 1000);
        std::optional<ClosedStreams> closed(std::in_place);
        // All below it are in use then, but for the standard streams.
        const int last = fcntl(open("/dev/null", O_RDONLY | O_CLOEXEC), F_DUPFD_CLOEXEC, 100);
        std::vector<int> filling;
        for (int next = 0; next < last;) {
            next = fcntl(last, F_DUPFD_CLOEXEC, STDERR_FILENO + 1);
            filling.push_back(next);
        }
        limit(RLIMIT_NOFILE, static_cast<rlim_t>(filling.back()) + 2); // for the source
        close(STDIN_FILENO);
        const std::string failure = failureOf(source, target);
        for (const int descriptor : filling) {
            close(descriptor);
        }
        closed.reset();
        EXPECT_EQ(failure, "cannot create zol.1.log.gz: Too many open files");
        EXPECT_FALSE(fs::exists(target));
        EXPECT_TRUE(descriptorsOf(source).empty());
    });
}

} // namespace
