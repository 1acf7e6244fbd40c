#include "Connection.h"

#include <chrono>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "SocketHeaders.h"
#include "Sockets.h"

namespace ZOL::Backends {

namespace {

using Clock = std::chrono::steady_clock;

constexpr std::chrono::milliseconds timeout = std::chrono::seconds(1);

/// Waits again if a signal has interrupted the wait.
bool waitWritable(std::intptr_t socket, Clock::time_point deadline) {
    for (;;) {
        const auto left =
            std::chrono::duration_cast<std::chrono::milliseconds>(deadline - Clock::now());
        if (Sockets::waitWritable(socket, left.count() < 0 ? 0 : static_cast<int>(left.count()))) {
            return true;
        }
        if (Clock::now() >= deadline) {
            return false;
        }
    }
}

struct AddrInfoDeleter {
    void operator()(addrinfo* addresses) const { ::freeaddrinfo(addresses); }
};

using Addresses = std::unique_ptr<addrinfo, AddrInfoDeleter>;

Addresses resolve(Connection::Protocol protocol, const std::string& host, int port) {
    addrinfo hints{};
    hints.ai_family = AF_UNSPEC;
    hints.ai_socktype = protocol == Connection::Protocol::tcp ? SOCK_STREAM : SOCK_DGRAM;
    hints.ai_flags = AI_NUMERICSERV;
    addrinfo* found = nullptr;
    const int error = ::getaddrinfo(host.c_str(), std::to_string(port).c_str(), &hints, &found);
    if (error != 0) {
        throw std::runtime_error("there is no address for the host " + host + " (error " +
                                 std::to_string(error) + ")");
    }
    return Addresses(found);
}

} // namespace

Connection::Connection(Protocol protocol, const std::string& host, int port)
    : protocol_(protocol), socket_(Sockets::invalidSocket) {
    Sockets::initialize();
    try {
        open(host, port);
    } catch (...) {
        Sockets::shutdown();
        throw;
    }
}

void Connection::open(const std::string& host, int port) {
    const Addresses addresses = resolve(protocol_, host, port);
    const Clock::time_point deadline = Clock::now() + timeout;
    int error = 0;
    for (const addrinfo* address = addresses.get(); address != nullptr;
         address = address->ai_next) {
        const std::intptr_t socket = Sockets::open(*address);
        if (socket == Sockets::invalidSocket) {
            error = Sockets::lastError();
            continue;
        }
        if (!Sockets::connect(socket, *address)) {
            error = Sockets::lastError();
        } else if (!waitWritable(socket, deadline)) {
            error = 0;
        } else {
            error = Sockets::pendingError(socket);
            if (error == 0) {
                socket_ = socket;
                return;
            }
        }
        Sockets::close(socket);
    }
    const std::string what = "no connection to " + host + " port " + std::to_string(port);
    if (error == 0) {
        throw std::runtime_error(what + ": no answer");
    }
    throw std::system_error(error, std::system_category(), what);
}

Connection::~Connection() {
    Sockets::close(socket_);
    Sockets::shutdown();
}

void Connection::throwIfClosedByPeer() {
    // Otherwise the system would accept one more message, and its loss would not be noticed.
    if (protocol_ == Protocol::tcp && Sockets::isClosedByPeer(socket_)) {
        throw std::runtime_error("the collector has closed the connection");
    }
}

void Connection::send(const char* data, std::size_t size) {
    throwIfClosedByPeer();
    const Clock::time_point deadline = Clock::now() + timeout;
    while (size > 0) {
        const long long sent = Sockets::send(socket_, data, size);
        if (sent < 0) {
            throw std::system_error(Sockets::lastError(), std::system_category(),
                                    "the message cannot be sent");
        }
        data += sent;
        size -= static_cast<std::size_t>(sent);
        if (size > 0 && !waitWritable(socket_, deadline)) {
            throw std::runtime_error("the collector takes no more messages");
        }
    }
}

} // namespace ZOL::Backends
