#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZOL::Backends {

/// A TCP connection or a UDP socket to a collector. Failures are std::system_error or
/// std::runtime_error.
///
/// Connecting and sending time out after one second, because all loggers of the process wait for
/// the call. Name resolution is not covered by this timeout; use a numeric address.
class Connection {
public:
    enum class Protocol { tcp, udp };

    Connection(Protocol protocol, const std::string& host, int port);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Passes all bytes to the system. After a failure the connection must not be used again.
    void send(const char* data, std::size_t size);

private:
    void open(const std::string& host, int port);
    void throwIfClosedByPeer();

    Protocol protocol_;
    std::intptr_t socket_;
};

} // namespace ZOL::Backends
