#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

struct addrinfo;

/// The socket functions whose names or results differ between platforms.
namespace ZOL::Backends::Sockets {

constexpr std::intptr_t invalidSocket = -1;

/// How much one call of discardIncoming reads.
constexpr std::size_t discardedBytes = 16384;

/// Must precede the other functions. Each call needs one call of shutdown.
void initialize();
void shutdown();

/// Returns a non-blocking socket that child processes do not inherit, or invalidSocket. It is none
/// of the standard streams.
std::intptr_t create(const addrinfo& address);
void close(std::intptr_t socket);

/// Starts to connect. True if connected or in progress.
bool connect(std::intptr_t socket, const addrinfo& address);

/// Waits until the socket is writable or its connection has failed; false after a timeout.
bool waitWritable(std::intptr_t socket, int milliseconds);

/// SO_ERROR: 0 once connected, otherwise the error.
int pendingError(std::intptr_t socket);

/// Returns the number of bytes accepted, 0 if the socket is not writable, negative on failure.
/// Raises no signal.
long long send(std::intptr_t socket, const char* data, std::size_t size);

enum class Incoming {
    none,
    discarded, ///< there may be more
    ended      ///< the peer has closed the connection, or it has failed
};

/// Reads and discards at most discardedBytes of what the peer has sent. Does not wait.
Incoming discardIncoming(std::intptr_t socket);

/// The text of an error code of getaddrinfo.
std::string resolutionError(int error);

/// The error code of the last failed function on this thread.
int lastError();

} // namespace ZOL::Backends::Sockets
