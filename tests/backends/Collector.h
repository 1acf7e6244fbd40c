#pragma once

#include <cstddef>
#include <cstdint>
#include <string>

/// A log collector on the loopback address.
class Collector {
public:
    enum class Kind {
        tcp,
        udp,
        unresponsive ///< TCP, but its listen queue is full: no connection is established
    };

    /// @param port 0 for a free one.
    /// @param address of the loopback interface.
    explicit Collector(Kind kind, int port = 0, const char* address = "127.0.0.1");
    Collector(const Collector&) = delete;
    Collector& operator=(const Collector&) = delete;
    /// Closes the connection and the port.
    ~Collector();

    int port() const;

    /// Accepts the connection of a sender, without reading from it.
    void accept();

    /// Sends to the sender what fits its buffer, and returns its size; negative on failure.
    long long send(const std::string& text);

    /// Reads what comes next, at most this many bytes.
    std::string read(std::size_t size);

    /// Ends its own direction of the connection only.
    void endSending();

    /// Closes the connection of the sender, but not the port.
    void disconnect();

    /// Receives until the text ends with this; returns what has arrived after a timeout of 10 s.
    std::string receive(const std::string& end);

private:
    std::intptr_t listener_;
    std::intptr_t sender_;
    std::intptr_t waiting_[4];
};
