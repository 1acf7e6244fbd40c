#pragma once

#include <winsock2.h>
#include <ws2tcpip.h>

using Socket = SOCKET;
using SocketLength = int;
using BufferLength = int;

constexpr int noSignal = 0;

inline void initializeSockets() {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
}

inline void closeSocket(Socket socket) {
    closesocket(socket);
}

inline void makeNonBlocking(Socket socket) {
    u_long yes = 1;
    ioctlsocket(socket, static_cast<long>(FIONBIO), &yes);
}

/// Nothing to do: SO_REUSEADDR would let two sockets share the port here.
inline void allowPortReuse(Socket) {}
