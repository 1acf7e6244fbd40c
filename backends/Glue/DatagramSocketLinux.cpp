#include "DatagramSocketLinux.h"

#include <cerrno>
#include <cstring>
#include <system_error>

#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <unistd.h>

namespace ZOL::Backends {

namespace {

constexpr timeval patience{0, 100'000};

[[noreturn]] void fail(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

} // namespace

DatagramSocket::DatagramSocket(const std::string& path)
    : path_(path), socket_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    if (socket_ == -1) {
        fail(path_);
    }
    // The system keeps a few packets only, some ten: a burst has to wait for its reader.
    setsockopt(socket_, SOL_SOCKET, SO_SNDTIMEO, &patience, sizeof(patience));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof(address.sun_path) - 1);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        const int error = errno;
        close(socket_);
        errno = error;
        fail(path_);
    }
}

DatagramSocket::~DatagramSocket() {
    close(socket_);
}

void DatagramSocket::send(std::string_view packet) {
    while (::send(socket_, packet.data(), packet.size(), 0) == -1) {
        if (errno != EINTR) {
            fail(path_);
        }
    }
}

} // namespace ZOL::Backends
