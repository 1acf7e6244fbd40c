#include "ListeningSocket.h"

#include <cerrno>
#include <system_error>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

ListeningSocket::ListeningSocket(const std::string& path, Type type, int backlog)
    : path_(path),
      socket_(socket(AF_UNIX, (type == Type::stream ? SOCK_STREAM : SOCK_DGRAM) | SOCK_CLOEXEC, 0)),
      connection_(socket_) {
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof(address.sun_path) - 1);
    if (bind(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0 ||
        (type == Type::stream && listen(socket_, backlog) != 0)) {
        throw std::system_error(errno, std::generic_category(), path_);
    }
}

ListeningSocket::~ListeningSocket() {
    disconnect();
    close(socket_);
    unlink(path_.c_str());
}

void ListeningSocket::accept() {
    disconnect();
    connection_ = accept4(socket_, nullptr, nullptr, SOCK_CLOEXEC);
}

void ListeningSocket::disconnect() {
    if (connection_ != socket_) {
        close(connection_);
    }
}

std::string ListeningSocket::receive() const {
    constexpr int timeout = 10000; // milliseconds
    pollfd arrived{connection_, POLLIN, 0};
    std::string packet(std::size_t{128} * 1024, '\0');
    const ssize_t size =
        poll(&arrived, 1, timeout) == 1 ? recv(connection_, packet.data(), packet.size(), 0) : 0;
    packet.resize(size > 0 ? static_cast<std::size_t>(size) : 0);
    return packet;
}
