#pragma once

#include <cstddef>
#include <string>
#include <string_view>

#include <spdlog/fwd.h>

namespace ZOL::Backends {

/// The syslog priority of a level. The journal uses the same numbers.
int syslogPriority(spdlog::level::level_enum level);

/// A client of a log service on this machine that listens on a datagram socket in the file system.
/// A call waits at most 100 ms for a service that does not read. Failures are std::system_error.
class LogSocket {
public:
    /// Fits a datagram at the system's default settings, with room for other fields.
    static constexpr std::size_t maxTextBytes = 60000;

    explicit LogSocket(const std::string& path);
    LogSocket(const LogSocket&) = delete;
    LogSocket& operator=(const LogSocket&) = delete;
    ~LogSocket();

    void send(std::string_view packet);

private:
    std::string path_;
    int socket_;
};

} // namespace ZOL::Backends
