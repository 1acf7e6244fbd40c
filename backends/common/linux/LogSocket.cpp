#include "LogSocket.h"

#include <cerrno>
#include <cstring>
#include <system_error>

#include <spdlog/common.h>
#include <sys/socket.h>
#include <sys/time.h>
#include <sys/un.h>
#include <syslog.h>
#include <unistd.h>

#include "Descriptors.h"

namespace ZOL::Backends {

namespace {

constexpr timeval timeout{0, 100'000};

[[noreturn]] void throwLastError(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

} // namespace

int syslogPriority(spdlog::level::level_enum level) {
    switch (level) {
    case spdlog::level::critical:
        return LOG_CRIT;
    case spdlog::level::err:
        return LOG_ERR;
    case spdlog::level::warn:
        return LOG_WARNING;
    case spdlog::level::info:
        return LOG_INFO;
    default:
        return LOG_DEBUG;
    }
}

LogSocket::LogSocket(const std::string& path)
    : path_(path), socket_(aboveStandardStreams(socket(AF_UNIX, SOCK_DGRAM | SOCK_CLOEXEC, 0))) {
    if (socket_ == -1) {
        throwLastError(path_);
    }
    // The system queues only about ten datagrams: a burst has to wait for the reader.
    setsockopt(socket_, SOL_SOCKET, SO_SNDTIMEO, &timeout, sizeof(timeout));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof(address.sun_path) - 1);
    if (connect(socket_, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) != 0) {
        const int error = errno;
        close(socket_);
        errno = error;
        throwLastError(path_);
    }
}

LogSocket::~LogSocket() {
    close(socket_);
}

void LogSocket::send(std::string_view packet) {
    while (::send(socket_, packet.data(), packet.size(), 0) == -1) {
        if (errno != EINTR) {
            throwLastError(path_);
        }
    }
}

} // namespace ZOL::Backends
