#pragma once

#include <cerrno>
#include <fstream>
#include <string>
#include <system_error>

#include <sched.h>
#include <sys/mount.h>
#include <unistd.h>

namespace support {

inline void requireMounts(bool done, const char* what) {
    if (!done) {
        throw std::system_error(
            errno, std::generic_category(),
            std::string("this test needs mounts of its own, which the machine does not allow: ") +
                what);
    }
}

/// Moves this process and its children into a private mount namespace. Throws std::system_error if
/// the system does not allow it.
inline void leaveTheMachinesMounts() {
    const auto write = [](const char* file, const std::string& text) {
        std::ofstream stream(file);
        stream << text << std::flush;
        requireMounts(stream.good(), file);
    };
    const std::string user = std::to_string(geteuid());
    const std::string group = std::to_string(getegid());
    if (geteuid() == 0) {
        requireMounts(unshare(CLONE_NEWNS) == 0, "unshare");
    } else {
        requireMounts(unshare(CLONE_NEWNS | CLONE_NEWUSER) == 0, "unshare with a user namespace");
        write("/proc/self/setgroups", "deny");
        write("/proc/self/uid_map", "0 " + user + " 1");
        write("/proc/self/gid_map", "0 " + group + " 1");
    }
    // In a chroot the root is no mount point (EINVAL), and its mounts are private already.
    requireMounts(mount(nullptr, "/", nullptr, MS_REC | MS_PRIVATE, nullptr) == 0 ||
                      errno == EINVAL,
                  "private mounts");
}

/// Mounts an empty tmpfs on an existing folder.
inline void mountMemory(const char* folder, const char* options) {
    requireMounts(mount("tmpfs", folder, "tmpfs", 0, options) == 0, "mount of a tmpfs");
}

/// Puts a file in place of another one, which exists.
inline void mountFile(const std::string& file, const char* place) {
    requireMounts(mount(file.c_str(), place, nullptr, MS_BIND, nullptr) == 0, place);
}

} // namespace support
