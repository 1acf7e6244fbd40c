#pragma once

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
    explicit Collector(Kind kind, int port = 0);
    Collector(const Collector&) = delete;
    Collector& operator=(const Collector&) = delete;
    /// Closes the connection and the port.
    ~Collector();

    int port() const;

    /// Accepts the connection of a sender, without reading from it.
    void accept();

    /// Receives until the text ends with this; returns what has arrived after a timeout of 10 s.
    std::string receive(const std::string& end);

private:
    std::intptr_t listener_;
    std::intptr_t sender_;
    std::intptr_t waiting_[4];
};
