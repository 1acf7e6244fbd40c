#include "ListeningSocket.h"

#include <cerrno>
#include <system_error>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

ListeningSocket::ListeningSocket(const std::string& path)
    : path_(path), socket_(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0)) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof(address.sun_path) - 1);
    if (bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        throw std::system_error(errno, std::generic_category(), path_);
    }
}

ListeningSocket::~ListeningSocket() {
    close(socket_);
    unlink(path_.c_str());
}

std::string ListeningSocket::receive() const {
    constexpr int timeout = 10000; // milliseconds
    pollfd arrived{socket_, POLLIN, 0};
    std::string packet(std::size_t{128} * 1024, '\0');
    const ssize_t size =
        poll(&arrived, 1, timeout) == 1 ? recv(socket_, packet.data(), packet.size(), 0) : 0;
    packet.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return packet;
}
