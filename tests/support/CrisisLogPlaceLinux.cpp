#include "CrisisLogPlace.h"

#include <cerrno>
#include <filesystem>
#include <fstream>
#include <system_error>

#include <fcntl.h>
#include <sched.h>
#include <sys/file.h>
#include <sys/mount.h>
#include <unistd.h>

namespace support {

namespace {

constexpr const char* folder = "/var/log";

void require(bool done, const char* what) {
    if (!done) {
        throw std::system_error(errno, std::generic_category(),
                                std::string("cannot keep the machine's own crisis log out of the "
                                            "test: ") +
                                    what);
    }
}

void write(const char* file, const std::string& text) {
    std::ofstream stream(file);
    stream << text << std::flush;
    require(stream.good(), file);
}

void leaveTheMachinesMounts() {
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (geteuid() == 0) {
        require(unshare(CLONE_NEWNS) == 0, "unshare");
    } else {
        require(unshare(CLONE_NEWNS | CLONE_NEWUSER) == 0, "unshare with a user namespace");
        write("/proc/self/setgroups", "deny");
        write("/proc/self/uid_map", "0 " + user + " 1");
        write("/proc/self/gid_map", "0 " + group + " 1");
    }
    // In a chroot the root is no mount point (EINVAL), and whoever made it has seen to this.
    require(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 || errno == EINVAL,
            "private mounts");
}

} // namespace

const char* const CrisisLogPlace::path = "/var/log/zol.log";
const char* const CrisisLogPlace::lineEnd = "\n";

CrisisLogPlace::CrisisLogPlace() {
    static bool left = false;
    if (!left) {
        leaveTheMachinesMounts();
        left = true;
    }
    require(mount("tmpfs", folder, "tmpfs", 0, "size=4m,mode=755") == 0, "mount of a tmpfs");
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
