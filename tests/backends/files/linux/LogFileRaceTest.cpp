// A log file that somebody else creates or deletes while it is opened.

#include "files/LogFile.h"

#include <atomic>
#include <cerrno>
#include <cstdarg>
#include <filesystem>
#include <fstream>

#include <fcntl.h>
#include <gtest/gtest.h>
#include <sys/stat.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "FreshFolder.h"

using ZOL::Backends::LogFile;
using ZOL::Backends::LogFileError;
namespace fs = std::filesystem;

namespace {

constexpr const char* name = "zol.log";
/// After which attempts without end end the process.
constexpr unsigned secondsToGiveUp = 20;

using Hook = void (*)();
std::atomic<Hook> whenMissing = nullptr;  ///< called after open() found no file
std::atomic<Hook> whenExisting = nullptr; ///< called after open() found a file it was to create

void call(const std::atomic<Hook>& hook) {
    const int error = errno;
    if (const Hook function = hook) {
        function();
    }
    errno = error;
}

} // namespace

/// In place of the C library's.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the library's are reserved
extern "C" int open(const char* path, int flags, ...) {
    mode_t mode = 0;
    if ((flags & O_CREAT) != 0) {
        va_list arguments;
        va_start(arguments, flags);
        mode = va_arg(arguments, mode_t);
        va_end(arguments);
    }
    const auto descriptor = static_cast<int>(syscall(SYS_openat, AT_FDCWD, path, flags, mode));
    if (descriptor == -1 && errno == ENOENT) {
        call(whenMissing);
    } else if (descriptor == -1 && errno == EEXIST) {
        call(whenExisting);
    }
    return descriptor;
}

namespace {

void createByAnother() {
    std::ofstream(name) << "another's line\n";
    chmod(name, 0604);
}

TEST(LogFileRace, KeepsThePermissionsAndTheTextOfAFileThatAnotherCreatedMeanwhile) {
    inFreshFolder([] {
        whenMissing = createByAnother;
        LogFile file(name, 0600);
        whenMissing = nullptr;
        EXPECT_EQ(file.size(), 15U);
        file.append("line\n");
        EXPECT_EQ(textOf(name), "another's line\nline\n");
        struct stat status = {};
        ASSERT_EQ(stat(name, &status), 0);
        EXPECT_EQ(status.st_mode & 07777U, 0604U);
    });
}

TEST(LogFileRace, IsGivenUpIfAnotherKeepsCreatingAndDeletingTheFile) {
    inFreshFolder([] {
        whenMissing = createByAnother;
        whenExisting = [] {
            fs::remove(name);
        };
        alarm(secondsToGiveUp);
        EXPECT_THROW(LogFile{name}, LogFileError);
        alarm(0);
        whenExisting = nullptr;
        EXPECT_NO_THROW(LogFile{name});
        whenMissing = nullptr;
    });
}

} // namespace
