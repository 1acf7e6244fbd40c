#pragma once

#include <cstddef>
#include <string>
#include <string_view>

namespace ZOL::Backends {

/// A way to a service of this machine that listens on a datagram socket in the file system. For one
/// that does not get on with its packets, a call waits a tenth of a second at most; failures are
/// std::system_error.
class DatagramSocket {
public:
    /// In bytes: what a socket takes with the system's settings, with room for other fields.
    static constexpr std::size_t longestText = 60000;

    explicit DatagramSocket(const std::string& path);
    DatagramSocket(const DatagramSocket&) = delete;
    DatagramSocket& operator=(const DatagramSocket&) = delete;
    ~DatagramSocket();

    void send(std::string_view packet);

private:
    std::string path_;
    int socket_;
};

} // namespace ZOL::Backends
