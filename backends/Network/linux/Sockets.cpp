#include "Sockets.h"

#include <cerrno>
#include <cstddef>
#include <system_error>

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

std::intptr_t create(const addrinfo& address) {
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

Incoming discardIncoming(std::intptr_t socket) {
    char data[discardedBytes];
    const ssize_t size = ::recv(descriptor(socket), data, sizeof(data), 0);
    if (size > 0) {
        return Incoming::discarded;
    }
    return size < 0 && (errno == EAGAIN || errno == EINTR) ? Incoming::none : Incoming::ended;
}

std::string resolutionError(int error) {
    return error == EAI_SYSTEM ? std::generic_category().message(errno) : ::gai_strerror(error);
}

int lastError() {
    return errno;
}

} // namespace ZOL::Backends::Sockets
