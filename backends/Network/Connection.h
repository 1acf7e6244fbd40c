#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

#include "StatementTimeout.h"

struct addrinfo;

namespace ZOL::Backends {

/// A TCP connection or a UDP socket to a collector. Failures are std::system_error,
/// std::runtime_error, or SinkTimeout at the deadline of the statement.
///
/// All loggers of the process wait for a call, so connecting and sending have a deadline. Signals
/// do not extend it. Name resolution is not covered; use a numeric address.
class Connection {
public:
    enum class Protocol { tcp, udp };

    /// Connects to the first address of the host that accepts. Each address gets an equal share of
    /// the time that is left, so that a dead one does not use it up.
    /// @param timeout shared by the connections of a back end, and outlives them.
    Connection(Protocol protocol, const std::string& host, int port, StatementTimeout& timeout);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Passes all bytes to the system. After a failure the connection must not be used again.
    void send(const char* data, std::size_t size);

private:
    using Clock = StatementTimeout::Clock;

    void connect(const std::string& host, int port);
    int connectTo(const addrinfo& address, Clock::time_point deadline);
    void throwIfClosedByPeer();

    Protocol protocol_;
    StatementTimeout& timeout_;
    std::intptr_t socket_;
};

} // namespace ZOL::Backends
