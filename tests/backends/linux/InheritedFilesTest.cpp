#include <filesystem>
#include <string>

#include <fcntl.h>
#include <gtest/gtest.h>

#include "ZOL/Framework/GenericLogger/Logger.h"

#include "FreshFolder.h"

using namespace ZOL::Framework::GenericLogger;
namespace fs = std::filesystem;

namespace {

void expectLogFileToBeClosedOnExec(const char* backend) {
    Logger::installBackend(backend);
    Logger::getLogger("orders")->info("x");
    int files = 0;
    for (const auto& entry : fs::directory_iterator("/proc/self/fd")) {
        if (fs::is_symlink(entry) && fs::read_symlink(entry).parent_path() == fs::current_path()) {
            ++files;
            const int flags = fcntl(std::stoi(entry.path().filename().string()), F_GETFD);
            EXPECT_EQ(flags & FD_CLOEXEC, FD_CLOEXEC);
        }
    }
    EXPECT_EQ(files, 2) << "the log and its lock";
}

TEST(InheritedFiles, DoNotIncludeTheFileOfRotatingFile) {
    inFreshFolder([] { expectLogFileToBeClosedOnExec("RotatingFile"); });
}

TEST(InheritedFiles, DoNotIncludeTheFileOfDailyFile) {
    inFreshFolder([] { expectLogFileToBeClosedOnExec("DailyFile"); });
}

} // namespace
