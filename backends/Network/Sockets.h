#pragma once

#include <cstddef>
#include <cstdint>

struct addrinfo;

namespace ZOL::Backends::Sockets {

// What the platforms' sockets have different names for.

constexpr std::intptr_t none = -1;

/// Before the first use, as often as one likes.
void start();
/// For each start.
void stop();

/// One that never waits, or none.
std::intptr_t open(const addrinfo& address);
void close(std::intptr_t socket);

/// Begins to connect; true also if that takes longer.
bool connect(std::intptr_t socket, const addrinfo& address);

/// Whether there is room to send before the time is over.
bool waitToSend(std::intptr_t socket, int milliseconds);

/// What a connection that has come about, or not, has to say for itself: 0 or the error.
int pendingError(std::intptr_t socket);

/// How many bytes the system took, 0 if it has no room at present, or a negative number.
long long send(std::intptr_t socket, const char* data, std::size_t size);

/// Whether the other side has closed the connection.
bool isClosedByPeer(std::intptr_t socket);

/// The error of the call before.
int lastError();

} // namespace ZOL::Backends::Sockets
