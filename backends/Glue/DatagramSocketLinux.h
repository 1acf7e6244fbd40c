#pragma once

#include <string>
#include <string_view>

namespace ZOL::Backends {

/// A way to a service of this machine that listens on a datagram socket in the file system. Never
/// waits; failures are std::system_error.
class DatagramSocket {
public:
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
