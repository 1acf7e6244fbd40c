#include "LogSocket.h"

#include <cerrno>
#include <system_error>

#include <poll.h>
#include <sys/socket.h>
#include <sys/un.h>
#include <unistd.h>

#include "Descriptors.h"
#include "ReopeningSink.h"

namespace ZOL::Backends {

namespace {

/// The system queues only about ten datagrams: a burst has to wait for the reader.
constexpr std::chrono::milliseconds timeout(100);

[[noreturn]] void throwLastError(const std::string& path) {
    throw std::system_error(errno, std::generic_category(), path);
}

} // namespace

LogSocket::LogSocket(const std::string& path) : path_(path) {
    open();
}

LogSocket::~LogSocket() {
    close(socket_);
}

void LogSocket::open() {
    isStream_ = false;
    socket_ = openSocket(SOCK_DGRAM);
    if (socket_ == -1 && errno == EPROTOTYPE) {
        isStream_ = true;
        socket_ = openSocket(SOCK_STREAM);
    }
    if (socket_ == -1) {
        throwLastError(path_);
    }
}

/// Returns -1 with errno set on failure.
int LogSocket::openSocket(int type) const {
    const int opened =
        aboveStandardStreams(socket(AF_UNIX, type | SOCK_CLOEXEC | SOCK_NONBLOCK, 0));
    sockaddr_un address{};
    address.sun_family = AF_UNIX;
    path_.copy(address.sun_path, sizeof(address.sun_path) - 1);
    if (opened == -1 ||
        connect(opened, reinterpret_cast<const sockaddr*>(&address), sizeof(address)) == 0) {
        return opened;
    }
    const int error = errno;
    close(opened);
    errno = error;
    return -1;
}

void LogSocket::send(std::string record) {
    const Clock::time_point deadline = Clock::now() + timeout;
    record += '\0'; // ends a record on a stream; the C library's syslog does the same
    if (trySend(record, deadline)) {
        return;
    }
    // The service may have been restarted.
    close(socket_);
    open();
    if (!trySend(record, deadline)) {
        throwLastError(path_);
    }
}

/// Returns false with errno set on failure.
bool LogSocket::trySend(const std::string& record, Clock::time_point deadline) {
    std::string_view unsent(record.data(), isStream_ ? record.size() : record.size() - 1);
    while (!unsent.empty()) {
        const ssize_t sent = ::send(socket_, unsent.data(), unsent.size(), MSG_NOSIGNAL);
        if (sent >= 0) {
            unsent.remove_prefix(static_cast<std::size_t>(sent));
        } else if (errno == EAGAIN) {
            waitWritable(deadline);
        } else if (errno != EINTR) {
            return false;
        }
    }
    return true;
}

/// Waits until the socket is writable, its connection has failed or a signal arrives.
void LogSocket::waitWritable(Clock::time_point deadline) const {
    const auto left = std::chrono::ceil<std::chrono::milliseconds>(deadline - Clock::now());
    if (left.count() <= 0) {
        throw SinkTimeout(path_ + ": the service does not read");
    }
    pollfd writable{socket_, POLLOUT, 0};
    poll(&writable, 1, static_cast<int>(left.count()));
}

} // namespace ZOL::Backends
