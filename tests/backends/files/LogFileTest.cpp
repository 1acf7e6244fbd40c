#include "files/LogFile.h"

#include <chrono>
#include <filesystem>
#include <fstream>
#include <iterator>
#include <memory>
#include <string>

#include <gtest/gtest.h>

#include "FreshFolder.h"

using ZOL::Backends::LogFile;
using ZOL::Backends::LogFileError;
namespace fs = std::filesystem;

namespace {

constexpr const char* name = "zol.log";

/// The text of a file with the line ends as they are, unlike textOf().
std::string bytesOf(const fs::path& path) {
    std::ifstream file(path, std::ios::binary);
    EXPECT_TRUE(file.is_open()) << path;
    return {std::istreambuf_iterator<char>(file), {}};
}

void put(const fs::path& path, const std::string& bytes) {
    std::ofstream(path, std::ios::binary) << bytes;
}

std::string refusalOf(const fs::path& path) {
    try {
        const LogFile file(path);
    } catch (const LogFileError& error) {
        return error.what();
    }
    return "no refusal";
}

TEST(LogFile, IsCreatedEmpty) {
    inFreshFolder([] {
        const LogFile file(name);
        EXPECT_EQ(bytesOf(name), "");
        EXPECT_EQ(file.size(), 0U);
        EXPECT_EQ(file.path(), fs::path(name));
        EXPECT_TRUE(file.isAtItsPath());
    });
}

TEST(LogFile, HoldsEachLineAtOnceAndUnchanged) {
    inFreshFolder([] {
        LogFile file(name);
        const std::string first("a\0b\r\n", 5);
        file.append(first);
        EXPECT_EQ(bytesOf(name), first);
        EXPECT_EQ(file.size(), first.size());
        file.append("second\n");
        EXPECT_EQ(bytesOf(name), first + "second\n");
        EXPECT_EQ(file.size(), first.size() + 7);
    });
}

TEST(LogFile, AppendsToWhatIsThere) {
    inFreshFolder([] {
        put(name, "from yesterday\n");
        LogFile file(name);
        EXPECT_EQ(file.size(), 15U);
        file.append("from today\n");
        EXPECT_EQ(bytesOf(name), "from yesterday\nfrom today\n");
        EXPECT_EQ(file.size(), 26U);
    });
}

TEST(LogFile, AppendsAfterTheLinesOfAnotherHandle) {
    inFreshFolder([] {
        LogFile one(name);
        LogFile other(name);
        one.append("first\n");
        other.append("second\n");
        one.append("third\n");
        EXPECT_EQ(bytesOf(name), "first\nsecond\nthird\n");
        EXPECT_EQ(one.size(), 12U) << "what another one appends is unknown before a refresh";
        one.refreshSize();
        EXPECT_EQ(one.size(), 19U);
    });
}

TEST(LogFile, WithANonAsciiNameIsThatFile) {
    inFreshFolder([] {
        const fs::path path = fs::u8path(u8"pr\u00fcfung-\u65e5.log");
        LogFile(path).append("line\n");
        EXPECT_EQ(bytesOf(path), "line\n");
    });
}

TEST(LogFile, BeginsAnewAfterAnotherHandleTruncatedIt) {
    inFreshFolder([] {
        LogFile file(name);
        file.append("a line that is lost\n");
        put(name, "");
        file.refreshSize();
        EXPECT_EQ(file.size(), 0U);
        file.append("new\n");
        EXPECT_EQ(bytesOf(name), "new\n") << "at offset 0, without a hole of zeros";
        EXPECT_EQ(file.size(), 4U);
    });
}

TEST(LogFile, ThatEndsWithinALineGetsALineEndFirst) {
    inFreshFolder([] {
        put(name, "torn li");
        LogFile file(name);
        EXPECT_EQ(file.size(), 7U) << "nothing is written before there is a line";
        file.append("first\n");
        file.append("second\n");
        EXPECT_EQ(textOf(name), "torn li\nfirst\nsecond\n");
        EXPECT_EQ(file.size(), fs::file_size(name));
    });
}

TEST(LogFile, ThatEndsWithinALineStillGetsALineEndAfterARefresh) {
    inFreshFolder([] {
        put(name, "torn li");
        LogFile file(name);
        file.refreshSize();
        file.append("first\n");
        EXPECT_EQ(textOf(name), "torn li\nfirst\n");
    });
}

TEST(LogFile, ThatLostItsTornLineGetsNoLineEnd) {
    inFreshFolder([] {
        put(name, "torn li");
        LogFile file(name);
        put(name, "");
        file.refreshSize();
        file.append("first\n");
        EXPECT_EQ(bytesOf(name), "first\n");
    });
}

TEST(LogFile, ThatIsTruncatedWithinALineGetsALineEndFirst) {
    inFreshFolder([] {
        LogFile file(name);
        file.append("first\n");
        file.append("second\n");
        fs::resize_file(name, 9);
        file.refreshSize();
        EXPECT_EQ(file.size(), 9U);
        file.append("third\n");
        file.append("fourth\n");
        EXPECT_EQ(textOf(name), "first\nsec\nthird\nfourth\n");
        EXPECT_EQ(file.size(), fs::file_size(name));
    });
}

TEST(LogFile, WhoseTornLineIsTruncatedToAnotherTornLineStillGetsALineEnd) {
    inFreshFolder([] {
        put(name, "first\ntorn line");
        LogFile file(name);
        fs::resize_file(name, 10);
        file.refreshSize();
        file.append("second\n");
        EXPECT_EQ(textOf(name), "first\ntorn\nsecond\n");
    });
}

TEST(LogFile, ThatIsTruncatedAfterALineGetsNoLineEnd) {
    inFreshFolder([] {
        put(name, "first\ntorn line");
        LogFile file(name);
        fs::resize_file(name, 6);
        file.refreshSize();
        file.append("second\n");
        EXPECT_EQ(textOf(name), "first\nsecond\n");
    });
}

TEST(LogFile, ThatEndsWithALineEndGetsNoOther) {
    inFreshFolder([] {
        for (const char* const text : {"", "\n", "whole\n", "whole\r\n"}) {
            put(name, text);
            LogFile(name).append("first\n");
            EXPECT_EQ(bytesOf(name), std::string(text) + "first\n");
        }
    });
}

TEST(LogFile, IsNotAtItsPathAfterItWasRenamed) {
    inFreshFolder([] {
        LogFile file(name);
        fs::rename(name, "zol.1.log");
        EXPECT_FALSE(file.isAtItsPath());
        file.append("still here\n");
        EXPECT_EQ(bytesOf("zol.1.log"), "still here\n");
        EXPECT_FALSE(fs::exists(name));
        fs::rename("zol.1.log", name);
        EXPECT_TRUE(file.isAtItsPath());
    });
}

TEST(LogFile, IsNotAtItsPathAfterItWasDeleted) {
    inFreshFolder([] {
        LogFile file(name);
        EXPECT_TRUE(fs::remove(name));
        EXPECT_EQ(file.isAtItsPath(), LogFile::isDeletionHidden());
        EXPECT_NO_THROW(file.append("into nothing\n"));
    });
}

TEST(LogFile, IsNotAtItsPathIfAnotherFileIsThere) {
    inFreshFolder([] {
        LogFile file(name);
        fs::rename(name, "zol.1.log");
        put(name, "another one\n");
        EXPECT_FALSE(file.isAtItsPath());
        file.append("line\n");
        EXPECT_EQ(bytesOf(name), "another one\n");
        EXPECT_EQ(bytesOf("zol.1.log"), "line\n");
    });
}

TEST(LogFile, IsNotAtItsPathIfAFolderIsThere) {
    inFreshFolder([] {
        const LogFile file(name);
        fs::rename(name, "zol.1.log");
        fs::create_directory(name);
        EXPECT_FALSE(file.isAtItsPath());
    });
}

TEST(LogFile, KnowsWhenItWasWrittenLast) {
    inFreshFolder([] {
        using Clock = std::chrono::system_clock;
        constexpr auto resolution = std::chrono::seconds(2);
        const auto before = Clock::now();
        LogFile file(name);
        file.append("line\n");
        EXPECT_GE(file.lastWrite(), before - resolution);
        EXPECT_LE(file.lastWrite(), Clock::now() + resolution);

        constexpr auto age = std::chrono::hours(50);
        fs::last_write_time(name, fs::last_write_time(name) - age);
        EXPECT_GE(file.lastWrite(), before - age - resolution);
        EXPECT_LE(file.lastWrite(), Clock::now() - age + resolution);
    });
}

TEST(LogFile, IsRefusedIfItIsAFolder) {
    inFreshFolder([] {
        fs::create_directory(name);
        EXPECT_EQ(refusalOf(name), "zol.log is a folder and not a regular file");
        EXPECT_TRUE(fs::is_empty(name));
    });
}

TEST(LogFile, InAMissingFolderIsRefusedWithItsNameAndTheReason) {
    inFreshFolder([] {
        const std::string path = u8"m\u00e4ngel/zol.log";
        const std::string expected = "cannot open " + path + ": ";
        const std::string text = refusalOf(fs::u8path(path));
        EXPECT_EQ(text.substr(0, expected.size()), expected);
        EXPECT_GT(text.size(), expected.size()) << "without a reason";
        EXPECT_FALSE(fs::exists(fs::u8path(path).parent_path()));
    });
}

TEST(LogFile, OfAPathBelowAFileIsRefused) {
    inFreshFolder([] {
        put("file", "text");
        const std::string expected = "cannot open file/zol.log: ";
        EXPECT_EQ(refusalOf("file/zol.log").substr(0, expected.size()), expected);
        EXPECT_EQ(bytesOf("file"), "text");
    });
}

TEST(LogFile, CanBeReadRenamedAndDeletedWhileItIsOpen) {
    inFreshFolder([] {
        LogFile file(name);
        file.append("line\n");
        std::ifstream viewer(name);
        std::string line;
        EXPECT_TRUE(std::getline(viewer, line));
        EXPECT_EQ(line, "line");
        viewer.close();
        std::error_code error;
        fs::rename(name, "zol.1.log", error);
        EXPECT_FALSE(error) << error.message();
        EXPECT_TRUE(fs::remove("zol.1.log", error));
        EXPECT_FALSE(error) << error.message();
    });
}

TEST(LogFile, IsKeptWhenItIsClosed) {
    inFreshFolder([] {
        std::make_unique<LogFile>(name)->append("line\n");
        EXPECT_EQ(bytesOf(name), "line\n");
    });
}

} // namespace
