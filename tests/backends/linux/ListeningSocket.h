#pragma once

#include <string>

/// A socket in the file system that log services listen on: of datagrams, or of streams.
class ListeningSocket {
public:
    enum class Type { datagram, stream };

    /// Throws std::system_error if the path exists or cannot be created.
    explicit ListeningSocket(const std::string& path, Type type = Type::datagram, int backlog = 10);
    ListeningSocket(const ListeningSocket&) = delete;
    ListeningSocket& operator=(const ListeningSocket&) = delete;

    /// Removes it from the file system.
    ~ListeningSocket();

    /// Accepts a connection, from which receive reads, in place of the one before.
    void accept();

    /// The next packet, or what a stream has to read; empty if none arrives.
    std::string receive() const;

private:
    void disconnect();

    std::string path_;
    int socket_;
    int connection_; // of a stream; the socket itself for datagrams
};
