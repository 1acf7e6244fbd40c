#pragma once

#include <string>

/// A local log service: a datagram socket in the file system.
class ListeningSocket {
public:
    explicit ListeningSocket(const std::string& path);
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;
    ~ListeningSocket();

    /// The next packet; empty after a timeout.
    std::string receive() const;

private:
    std::string path_;
    int socket_;
};
