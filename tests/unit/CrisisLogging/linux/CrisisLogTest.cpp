// The crisis log on Linux: file systems and descriptors.

#include <filesystem>
#include <fstream>
#include <string>

#include <gtest/gtest.h>

#include <dlfcn.h>
#include <pthread.h>
#include <sys/mount.h>
#include <sys/stat.h>

#include "CrisisClients.h"
#include "CrisisLogHooks.h"
#include "CrisisLogSandbox.h"

#include "ZOL/Framework/CrisisLogging/CrisisLogger.h"
#include "ZOL/Framework/Exceptions/FrameworkException.h"

using support::CrisisLogSandbox;
using ZOL::Framework::CrisisLogging::CrisisLogger;
using ZOL::Framework::Exceptions::FrameworkException;
namespace CrisisLogHooks = support::CrisisLogHooks;

namespace {

thread_local int locksTaken = 0;

} // namespace

// Interposes the C library's function.
extern "C" int pthread_mutex_lock(pthread_mutex_t* mutex) noexcept {
    using Function = int(pthread_mutex_t*);
    static auto* const next = reinterpret_cast<Function*>(dlsym(RTLD_NEXT, "pthread_mutex_lock"));
    ++locksTaken;
    return next(mutex);
}

namespace {

constexpr const char* filler = "/var/log/filler";

void fillTheDisk() {
    std::ofstream file(filler, std::ios_base::binary);
    const std::string page(4096, 'x');
    while (file << page << std::flush) {
    }
    ASSERT_EQ(std::filesystem::space("/var/log").available, 0U);
}

CRISIS_LOG_TEST(CrisisLogOnLinux, AFullDiskDropsTheLineAndTheNextIsWritten) {
    const std::string wholePage(4096, '-'); // more than the file's allocated space
    {
        std::ofstream file(CrisisLogSandbox::path, std::ios_base::binary);
        file << wholePage;
    }
    CrisisLogHooks::attach();
    CrisisLogHooks::setTime(9, 5, 7, 12);
    CrisisLogger& logger = CrisisLogger::instance();
    fillTheDisk();
    logger.log("lost");
    logger.log("lost as well");
    EXPECT_EQ(CrisisLogHooks::content(), wholePage);
    std::filesystem::remove(filler);
    logger.log("written");
    logger.log("and another");
    EXPECT_EQ(CrisisLogHooks::content(),
              wholePage + "09:5:7.012 - written\n09:5:7.012 - and another\n");
}

CRISIS_LOG_TEST(CrisisLogOnLinux, AReadOnlyFileSystemRefusesTheLogUntilItIsWritable) {
    ASSERT_EQ(mount(nullptr, "/var/log", nullptr, MS_REMOUNT | MS_RDONLY, nullptr), 0);
    EXPECT_THROW(CrisisLogger::instance(), FrameworkException);
    ASSERT_EQ(mount(nullptr, "/var/log", nullptr, MS_REMOUNT, nullptr), 0);
    CrisisLogger::instance().log("written");
    EXPECT_NE(CrisisLogHooks::content().find(" - written\n"), std::string::npos);
}

CRISIS_LOG_TEST(CrisisLogOnLinux, AProcessStartedMeanwhileDoesNotKeepTheFileFromOthers) {
    CrisisLogger& logger = CrisisLogger::instance();
    const StayingClient started("idle");
    logger.~CrisisLogger();
    EXPECT_TRUE(CrisisLogSandbox::isFree());
    EXPECT_EQ(logInAnotherProcess("free"), gotTheLog);
}

CRISIS_LOG_TEST(CrisisLogOnLinux, OnlyTheFirstInstanceTakesALockAndALineTakesOne) {
    locksTaken = 0;
    CrisisLogger& logger = CrisisLogger::instance();
    EXPECT_EQ(locksTaken, 1);
    CrisisLogger::instance();
    CrisisLogger::instance();
    EXPECT_EQ(locksTaken, 1);
    logger.log("message");
    EXPECT_EQ(locksTaken, 2);
}

CRISIS_LOG_TEST(CrisisLogOnLinux, OnlyTheOwnerMayWriteTheFileAndEverybodyMayReadIt) {
    umask(0);
    CrisisLogger::instance();
    struct stat status = {};
    ASSERT_EQ(stat(CrisisLogSandbox::path, &status), 0);
    EXPECT_EQ(status.st_mode & 07777U, 0644U);
}

} // namespace
