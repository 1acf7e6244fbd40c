#include "Sockets.h"

#include <algorithm>
#include <cstddef>
#include <system_error>

#include "SocketHeaders.h"

namespace ZOL::Backends::Sockets {

namespace {

SOCKET handle(std::intptr_t socket) {
    return static_cast<SOCKET>(socket);
}

} // namespace

void initialize() {
    WSADATA data;
    const int error = ::WSAStartup(MAKEWORD(2, 2), &data);
    if (error != 0) {
        throw std::system_error(error, std::system_category(), "WSAStartup");
    }
}

void shutdown() {
    ::WSACleanup();
}

std::intptr_t create(const addrinfo& address) {
    const SOCKET socket =
        ::WSASocketW(address.ai_family, address.ai_socktype, address.ai_protocol, nullptr, 0,
                     WSA_FLAG_NO_HANDLE_INHERIT | WSA_FLAG_OVERLAPPED);
    if (socket == INVALID_SOCKET) {
        return invalidSocket;
    }
    u_long yes = 1;
    ::ioctlsocket(socket, static_cast<long>(FIONBIO), &yes);
    return static_cast<std::intptr_t>(socket);
}

void close(std::intptr_t socket) {
    ::closesocket(handle(socket));
}

bool connect(std::intptr_t socket, const addrinfo& address) {
    return ::connect(handle(socket), address.ai_addr, static_cast<int>(address.ai_addrlen)) == 0 ||
           ::WSAGetLastError() == WSAEWOULDBLOCK;
}

bool waitWritable(std::intptr_t socket, int milliseconds) {
    fd_set writable;
    writable.fd_count = 1;
    writable.fd_array[0] = handle(socket);
    fd_set failed = writable; // reports a refused connection
    timeval time{milliseconds / 1000, milliseconds % 1000 * 1000};
    return ::select(0, nullptr, &writable, &failed, &time) > 0;
}

int pendingError(std::intptr_t socket) {
    int error = 0;
    int size = sizeof(error);
    return ::getsockopt(handle(socket), SOL_SOCKET, SO_ERROR, reinterpret_cast<char*>(&error),
                        &size) == 0
               ? error
               : ::WSAGetLastError();
}

long long send(std::intptr_t socket, const char* data, std::size_t size) {
    constexpr std::size_t maxSize = 1 << 30;
    const int sent = ::send(handle(socket), data, static_cast<int>(std::min(size, maxSize)), 0);
    return sent < 0 && ::WSAGetLastError() == WSAEWOULDBLOCK ? 0 : sent;
}

Incoming discardIncoming(std::intptr_t socket) {
    char data[discardedBytes];
    const int size = ::recv(handle(socket), data, sizeof(data), 0);
    if (size > 0) {
        return Incoming::discarded;
    }
    return size < 0 && ::WSAGetLastError() == WSAEWOULDBLOCK ? Incoming::none : Incoming::ended;
}

std::string resolutionError(int error) {
    return std::system_category().message(error); // gai_strerrorA is not thread-safe
}

int lastError() {
    return ::WSAGetLastError();
}

} // namespace ZOL::Backends::Sockets
