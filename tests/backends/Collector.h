#pragma once

#include <cstdint>
#include <string>

/// Takes log messages on the loopback address.
class Collector {
public:
    enum class Kind {
        tcp,
        udp,
        deaf ///< by TCP, but so busy that nobody gets a connection
    };

    /// @param port 0 for one that is free.
    explicit Collector(Kind kind, int port = 0);
    Collector(const Collector&) = delete;
    Collector& operator=(const Collector&) = delete;
    /// Goes away, and with it the connection.
    ~Collector();

    int port() const;

    /// Accepts the connection of a sender, without reading from it.
    void accept();

    /// What has come, once it ends with this text; what there is if that takes too long.
    std::string receive(const std::string& end);

private:
    std::intptr_t listener_;
    std::intptr_t sender_;
    std::intptr_t waiting_[4];
};
