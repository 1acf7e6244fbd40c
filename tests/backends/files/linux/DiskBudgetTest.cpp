// A RotatingLog in a folder that its user may not change.

#include <chrono>
#include <filesystem>
#include <fstream>
#include <string>
#include <vector>

#include <gtest/gtest.h>
#include <linux/capability.h>
#include <sys/syscall.h>
#include <unistd.h>

#include "FreshFolder.h"
#include "RotatedFiles.h"
#include "files/RotatingLog.h"

using namespace ZOL::Backends;
using namespace std::chrono_literals;
namespace fs = std::filesystem;

namespace {

using Clock = RotatingLog::Clock;
using Texts = std::vector<std::string>;

constexpr fs::perms readOnly = fs::perms::owner_read | fs::perms::owner_exec;

/// Lets permissions hold for this process even if it is root's.
void obeyPermissions() {
    __user_cap_header_struct header = {_LINUX_CAPABILITY_VERSION_3, 0};
    __user_cap_data_struct none[_LINUX_CAPABILITY_U32S_3] = {};
    ASSERT_EQ(syscall(SYS_capset, &header, none), 0);
}

TEST(DiskBudget, IsReportedOnceInAFolderThatCannotBeChangedAndNoLineIsLost) {
    inFreshFolder([] {
        RotatingLogSettings settings;
        settings.path = "logs/zol.log";
        settings.maxBytes = 7;
        settings.retention = {1, 1, 20};
        fs::create_directory("logs");
        for (const char* const name :
             {"logs/zol.2.log", "logs/zol_2026-01-31.log", "logs/zol.log", "logs/zol.log.lock"}) {
            std::ofstream(name) << "older\n";
        }
        obeyPermissions();
        fs::permissions("logs", readOnly);
        ASSERT_FALSE(std::ofstream("logs/new").is_open());
        testing::internal::CaptureStderr();
        RotatingLog log("Test", settings);
        const Clock::time_point now = Clock::now();
        std::string expected = "older\n";
        for (int i = 0; i < 10; ++i) {
            const std::string line = "line " + std::to_string(i) + "\n";
            log.write(line, now + i * 600ms);
            expected += line;
        }
        EXPECT_EQ(textOf("logs/zol.log"), expected);
        EXPECT_EQ(testing::internal::GetCapturedStderr(),
                  "ZOL back end Test: cannot remove logs/zol.2.log: Permission denied\n"
                  "ZOL back end Test: cannot begin a new file for logs/zol.log: Permission denied; "
                  "writing on to the old one\n");

        fs::permissions("logs", fs::perms::owner_all);
        log.write("next\n", now + 7s);
        EXPECT_EQ(rotatedTexts("logs/zol.log"), Texts{expected});
        EXPECT_EQ(textOf("logs/zol.log"), "next\n");
        EXPECT_FALSE(fs::exists("logs/zol.2.log"));
        EXPECT_FALSE(fs::exists("logs/zol_2026-01-31.log"));
    });
}

} // namespace
