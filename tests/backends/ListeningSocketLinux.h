#pragma once

#include <string>

/// A service of the machine as a test plays it: a datagram socket in the file system.
class ListeningSocket {
public:
    explicit ListeningSocket(const std::string& path);
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;
    ~ListeningSocket();

    /// The next packet; empty if none comes.
    std::string receive() const;

private:
    std::string path_;
    int socket_;
};
