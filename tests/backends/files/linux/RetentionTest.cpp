#include "files/Retention.h"

#include <fstream>

#include <gtest/gtest.h>

#include "FreshFolder.h"

using namespace ZOL::Backends;

namespace fs = std::filesystem;

namespace {

TEST(RotatedFiles, AreNoSymbolicLinks) {
    inFreshFolder([] {
        std::ofstream("important.txt") << "text";
        fs::create_directory("folder");
        fs::create_symlink("important.txt", "zol.20260131T000000Z.000.log");
        fs::create_symlink("folder", "zol.20260131T000001Z.000.log");
        fs::create_symlink("missing", "zol.20260131T000002Z.000.log");
        std::ofstream("zol.20260131T000003Z.000.log") << "text";
        const std::vector<RotatedFile> files = rotatedFiles("zol.log");
        ASSERT_EQ(files.size(), 1U);
        EXPECT_EQ(files.front().path.filename(), "zol.20260131T000003Z.000.log");
    });
}

TEST(RotatedFiles, AreFoundBesideANameThatIsNoText) {
    inFreshFolder([] {
        for (const char* const name : {"zol.\xFF.log", "\xFF.log", "zol.1.log"}) {
            std::ofstream(name) << "text";
        }
        ASSERT_EQ(rotatedFiles("zol.log").size(), 1U);
        EXPECT_EQ(rotatedFiles("zol.log").front().path.filename(), "zol.1.log");
    });
}

TEST(RotatedFiles, MayBeInAFolderThatIsASymbolicLink) {
    inFreshFolder([] {
        fs::create_directory("disk");
        fs::create_directory_symlink("disk", "logs");
        std::ofstream("disk/zol.20260131T000000Z.000.log") << "text";
        EXPECT_EQ(rotatedFiles("logs/zol.log").size(), 1U);
    });
}

} // namespace
