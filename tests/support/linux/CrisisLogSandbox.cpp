#include "CrisisLogSandbox.h"

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>

#include "linux/PrivateMounts.h"

namespace support {

namespace {

constexpr const char* folder = "/var/log";

} // namespace

const char* const CrisisLogSandbox::path = "/var/log/zol.log";
const char* const CrisisLogSandbox::lineEnd = "\n";

CrisisLogSandbox::CrisisLogSandbox() {
    static bool left = false;
    if (!left) {
        leaveTheMachinesMounts();
        left = true;
    }
    mountMemory(folder, "size=4m,mode=755");
}

CrisisLogSandbox::~CrisisLogSandbox() {
    umount2(folder, MNT_DETACH);
}

std::string CrisisLogSandbox::scratch() {
    std::string scratch = std::string(folder) + "/scratch";
    std::filesystem::create_directory(scratch);
    return scratch;
}

bool CrisisLogSandbox::isFree() {
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor == -1) {
        return errno == ENOENT;
    }
    const bool got = flock(descriptor, LOCK_SH | LOCK_NB) == 0;
    close(descriptor);
    return got;
}

} // namespace support
