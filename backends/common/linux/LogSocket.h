#pragma once

#include <chrono>
#include <cstddef>
#include <string>

namespace ZOL::Backends {

/// A client of a log service on this machine that listens on a socket in the file system: a
/// datagram socket, or a stream socket, on which a zero byte ends each record. Raises no signal.
///
/// Opening waits for nothing. Failures are std::system_error or SinkTimeout.
class LogSocket {
public:
    /// Fits a datagram at the system's default settings, with room for other fields.
    static constexpr std::size_t maxTextBytes = 60000;

    explicit LogSocket(const std::string& path);
    LogSocket(const LogSocket&) = delete;
    LogSocket& operator=(const LogSocket&) = delete;
    ~LogSocket();

    /// Sends one record. Waits at most 100 ms for a service that does not read; signals do not
    /// prolong that. Connects again, once, to a service that has been restarted. After a failure
    /// the socket cannot be used any more, because a part of the record may have been sent.
    void send(std::string record);

private:
    using Clock = std::chrono::steady_clock;

    void open();
    int openSocket(int type) const;
    bool trySend(const std::string& record, Clock::time_point deadline);
    void waitWritable(Clock::time_point deadline) const;

    std::string path_;
    int socket_ = -1;
    bool isStream_ = false;
};

} // namespace ZOL::Backends
