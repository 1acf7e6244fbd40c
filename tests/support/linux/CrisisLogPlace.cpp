#include "CrisisLogPlace.h"

#include <cerrno>
#include <filesystem>

#include <fcntl.h>
#include <sys/file.h>

#include "linux/PrivateMounts.h"

namespace support {

namespace {

constexpr const char* folder = "/var/log";

} // namespace

const char* const CrisisLogPlace::path = "/var/log/zol.log";
const char* const CrisisLogPlace::lineEnd = "\n";

CrisisLogPlace::CrisisLogPlace() {
    static bool left = false;
    if (!left) {
        leaveTheMachinesMounts();
        left = true;
    }
    mountMemory(folder, "size=4m,mode=755");
}

CrisisLogPlace::~CrisisLogPlace() {
    umount2(folder, MNT_DETACH);
}

std::string CrisisLogPlace::scratch() {
    std::string scratch = std::string(folder) + "/scratch";
    std::filesystem::create_directory(scratch);
    return scratch;
}

bool CrisisLogPlace::isFree() {
    const int descriptor = open(path, O_RDONLY | O_CLOEXEC);
    if (descriptor == -1) {
        return errno == ENOENT;
    }
    const bool got = flock(descriptor, LOCK_SH | LOCK_NB) == 0;
    close(descriptor);
    return got;
}

} // namespace support
