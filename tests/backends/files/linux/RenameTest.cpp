// Renaming on a file system that cannot refuse to replace a file in the same step.

#include "files/Rename.h"

#include <atomic>
#include <cerrno>
#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "FreshFolder.h"

using ZOL::Backends::renameWithoutReplacing;
namespace fs = std::filesystem;

namespace {

std::atomic<int> renameError = 0; ///< that of renameat2(), unless 0

} // namespace

/// In place of the C library's.
// NOLINTNEXTLINE(readability-inconsistent-declaration-parameter-name): the library's are reserved
extern "C" int renameat2(int fromFolder, const char* from, int toFolder, const char* to,
                         unsigned int flags) noexcept {
    if (renameError != 0) {
        errno = renameError;
        return -1;
    }
    return static_cast<int>(syscall(SYS_renameat2, fromFolder, from, toFolder, to, flags));
}

namespace {

void inFreshFolderOfASimpleFileSystem(void (*body)()) {
    inFreshFolder([body] {
        for (const int error : {EINVAL, ENOSYS}) {
            std::ofstream("from.log") << "text";
            renameError = error;
            body();
            renameError = 0;
        }
    });
}

TEST(RenameOnASimpleFileSystem, MovesAFile) {
    inFreshFolderOfASimpleFileSystem([] {
        const std::error_code error = renameWithoutReplacing("from.log", "to.log");
        EXPECT_FALSE(error) << error.message();
        EXPECT_FALSE(fs::exists("from.log"));
        EXPECT_EQ(textOf("to.log"), "text");
        fs::remove("to.log");
    });
}

TEST(RenameOnASimpleFileSystem, DoesNotReplaceAnotherFile) {
    inFreshFolderOfASimpleFileSystem([] {
        std::ofstream("to.log") << "another text";
        EXPECT_EQ(renameWithoutReplacing("from.log", "to.log"), std::errc::file_exists);
        EXPECT_EQ(textOf("from.log"), "text");
        EXPECT_EQ(textOf("to.log"), "another text");
    });
}

TEST(RenameOnASimpleFileSystem, DoesNotReplaceADanglingLink) {
    inFreshFolderOfASimpleFileSystem([] {
        fs::remove("to.log");
        fs::create_symlink("nowhere", "to.log");
        EXPECT_EQ(renameWithoutReplacing("from.log", "to.log"), std::errc::file_exists);
        EXPECT_EQ(textOf("from.log"), "text");
        EXPECT_TRUE(fs::is_symlink("to.log"));
    });
}

TEST(RenameOnASimpleFileSystem, ReportsAMissingFile) {
    inFreshFolderOfASimpleFileSystem([] {
        EXPECT_EQ(renameWithoutReplacing("missing.log", "to.log"),
                  std::errc::no_such_file_or_directory);
    });
}

} // namespace
