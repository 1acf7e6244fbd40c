#include "files/FileLock.h"

#include <filesystem>

#include <gtest/gtest.h>

#include "FreshFolder.h"

using ZOL::Backends::FileLock;

namespace {

TEST(FileLockOnWindows, DeletesItsFileWhenItIsReleased) {
    inFreshFolder([] {
        {
            const auto lock = FileLock::tryLock("zol.log");
            EXPECT_TRUE(std::filesystem::exists("zol.log.lock"));
        }
        EXPECT_FALSE(std::filesystem::exists("zol.log.lock"));
    });
}

} // namespace
