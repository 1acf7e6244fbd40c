#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

namespace ZOL::Backends {

/// A TCP connection, or a UDP socket, to a collector. No call waits longer than a second for the
/// other side, since all loggers of the process would wait along; only the look-up of a name takes
/// as long as the system lets it. Failures are std::system_error or std::runtime_error.
class Connection {
public:
    enum class Protocol { tcp, udp };

    Connection(Protocol protocol, const std::string& host, int port);
    Connection(const Connection&) = delete;
    Connection& operator=(const Connection&) = delete;
    ~Connection();

    /// Hands all of it to the system. After a failure, the connection is of no more use.
    void send(const char* data, std::size_t size);

private:
    void open(const std::string& host, int port);
    void refuseIfClosedByCollector();

    Protocol protocol_;
    std::intptr_t socket_;
};

} // namespace ZOL::Backends
