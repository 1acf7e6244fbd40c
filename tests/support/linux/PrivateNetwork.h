#pragma once

#include <cerrno>
#include <cstring>
#include <string>
#include <system_error>

#include <net/if.h>
#include <sched.h>
#include <sys/ioctl.h>
#include <sys/socket.h>
#include <unistd.h>

namespace support {

/// Moves this process and its children into a private network namespace with a loopback device
/// only, where every port is free. Throws std::system_error if the system does not allow it.
inline void leaveTheMachinesNetwork() {
    const auto require = [](bool done, const char* what) {
        if (!done) {
            throw std::system_error(
                errno, std::generic_category(),
                std::string(
                    "this test needs a network of its own, which the machine does not allow: ") +
                    what);
        }
    };
    const int user = geteuid() == 0 ? 0 : CLONE_NEWUSER;
    require(unshare(CLONE_NEWNET | user) == 0, "unshare");
    ifreq loopback{};
    std::strcpy(loopback.ifr_name, "lo");
    loopback.ifr_flags = IFF_UP;
    const int control = socket(AF_INET, SOCK_DGRAM | SOCK_CLOEXEC, 0);
    const bool isUp = control != -1 && ioctl(control, SIOCSIFFLAGS, &loopback) == 0;
    close(control);
    require(isUp, "the loopback device");
}

} // namespace support
