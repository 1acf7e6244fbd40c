#include "Sockets.h"

#include <cerrno>
#include <cstddef>

#include <poll.h>
#include <unistd.h>

#include "SocketHeaders.h"
#include "linux/Descriptors.h"

namespace ZOL::Backends::Sockets {

namespace {

int descriptor(std::intptr_t socket) {
    return static_cast<int>(socket);
}

} // namespace

void initialize() {}

void shutdown() {}

std::intptr_t open(const addrinfo& address) {
    return aboveStandardStreams(::socket(address.ai_family,
                                         address.ai_socktype | SOCK_CLOEXEC | SOCK_NONBLOCK,
                                         address.ai_protocol));
}

void close(std::intptr_t socket) {
    ::close(descriptor(socket));
}

bool connect(std::intptr_t socket, const addrinfo& address) {
    return ::connect(descriptor(socket), address.ai_addr, address.ai_addrlen) == 0 ||
           errno == EINPROGRESS;
}

bool waitWritable(std::intptr_t socket, int milliseconds) {
    pollfd writable{descriptor(socket), POLLOUT, 0};
    return ::poll(&writable, 1, milliseconds) == 1;
}

int pendingError(std::intptr_t socket) {
    int error = 0;
    socklen_t size = sizeof(error);
    return ::getsockopt(descriptor(socket), SOL_SOCKET, SO_ERROR, &error, &size) == 0 ? error
                                                                                      : errno;
}

long long send(std::intptr_t socket, const char* data, std::size_t size) {
    const ssize_t sent = ::send(descriptor(socket), data, size, MSG_NOSIGNAL);
    return sent < 0 && (errno == EAGAIN || errno == EINTR) ? 0 : sent;
}

bool isClosedByPeer(std::intptr_t socket) {
    char byte = 0;
    const ssize_t size = ::recv(descriptor(socket), &byte, 1, MSG_PEEK | MSG_DONTWAIT);
    return size == 0 || (size < 0 && errno != EAGAIN && errno != EINTR);
}

int lastError() {
    return errno;
}

} // namespace ZOL::Backends::Sockets
