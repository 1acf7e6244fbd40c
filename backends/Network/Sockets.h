#pragma once

#include <cstddef>
#include <cstdint>

struct addrinfo;

/// The socket functions whose names or results differ between platforms.
namespace ZOL::Backends::Sockets {

constexpr std::intptr_t invalidSocket = -1;

/// Must precede the other functions. Each call needs one call of shutdown.
void initialize();
void shutdown();

/// Returns a non-blocking socket, or invalidSocket.
std::intptr_t open(const addrinfo& address);
void close(std::intptr_t socket);

/// Starts to connect. True if connected or in progress.
bool connect(std::intptr_t socket, const addrinfo& address);

/// Waits until the socket is writable or its connection has failed; false after a timeout.
bool waitWritable(std::intptr_t socket, int milliseconds);

/// SO_ERROR: 0 once connected, otherwise the error.
int pendingError(std::intptr_t socket);

/// Returns the number of bytes accepted, 0 if the socket is not writable, negative on failure.
long long send(std::intptr_t socket, const char* data, std::size_t size);

bool isClosedByPeer(std::intptr_t socket);

/// The error code of the last failed function on this thread.
int lastError();

} // namespace ZOL::Backends::Sockets
