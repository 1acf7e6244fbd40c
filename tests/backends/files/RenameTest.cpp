#include "files/Rename.h"

#include <filesystem>
#include <fstream>

#include <gtest/gtest.h>

#include "FreshFolder.h"
#include "files/LogFile.h"

using ZOL::Backends::LogFile;
using ZOL::Backends::renameWithoutReplacing;
namespace fs = std::filesystem;

namespace {

TEST(Rename, MovesAFileToItsNewName) {
    inFreshFolder([] {
        std::ofstream("from.log") << "text";
        const std::error_code error = renameWithoutReplacing("from.log", "to.log");
        EXPECT_FALSE(error) << error.message();
        EXPECT_FALSE(fs::exists("from.log"));
        EXPECT_EQ(textOf("to.log"), "text");
    });
}

TEST(Rename, NeverReplacesAnotherFile) {
    inFreshFolder([] {
        std::ofstream("from.log") << "text";
        std::ofstream("to.log") << "another text";
        EXPECT_EQ(renameWithoutReplacing("from.log", "to.log"), std::errc::file_exists);
        EXPECT_EQ(textOf("from.log"), "text");
        EXPECT_EQ(textOf("to.log"), "another text");
    });
}

TEST(Rename, NeverReplacesAFolder) {
    inFreshFolder([] {
        std::ofstream("from.log") << "text";
        fs::create_directory("to.log");
        EXPECT_EQ(renameWithoutReplacing("from.log", "to.log"), std::errc::file_exists);
        EXPECT_EQ(textOf("from.log"), "text");
        EXPECT_TRUE(fs::is_directory("to.log"));
    });
}

TEST(Rename, MovesAFileThatIsOpenForAppending) {
    inFreshFolder([] {
        LogFile file("from.log");
        file.append("before\n");
        const std::error_code error = renameWithoutReplacing("from.log", "to.log");
        EXPECT_FALSE(error) << error.message();
        file.append("after\n");
        EXPECT_EQ(textOf("to.log"), "before\nafter\n");
        EXPECT_FALSE(fs::exists("from.log"));
    });
}

TEST(Rename, ReportsAMissingFile) {
    inFreshFolder([] {
        EXPECT_EQ(renameWithoutReplacing("from.log", "to.log"),
                  std::errc::no_such_file_or_directory);
        EXPECT_FALSE(fs::exists("to.log"));
    });
}

TEST(Rename, HandlesNonAsciiNames) {
    inFreshFolder([] {
        const fs::path from = fs::u8path(u8"pr\u00fcfung.log");
        const fs::path to = fs::u8path(u8"pr\u00fcfung-\u65e5.log");
        std::ofstream(from) << "text";
        const std::error_code error = renameWithoutReplacing(from, to);
        EXPECT_FALSE(error) << error.message();
        EXPECT_EQ(textOf(to), "text");
    });
}

} // namespace
