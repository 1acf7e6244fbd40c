#pragma once

#include <cstddef>

#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>

using Socket = int;
using SocketLength = socklen_t;
using BufferLength = std::size_t;

constexpr int noSignal = MSG_NOSIGNAL;

inline void initializeSockets() {}

inline void closeSocket(Socket socket) {
    close(socket);
}

inline void makeNonBlocking(Socket socket) {
    fcntl(socket, F_SETFL, O_NONBLOCK);
}

/// Lets a socket bind to a port that was in use a moment ago.
inline void allowPortReuse(Socket socket) {
    const int yes = 1;
    setsockopt(socket, SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
}
