#include "Connection.h"

#include <chrono>
#include <memory>
#include <stdexcept>
#include <system_error>

#include "ReopeningSink.h"
#include "SocketHeaders.h"
#include "Sockets.h"

namespace ZOL::Backends {

namespace {

/// The result of connecting to an address that does not answer in time; no error code of a system.
constexpr int noAnswer = -1;

/// What a statement discards at most of what the collector sends, so that one that never stops
/// sending does not stall it.
constexpr int maxDiscards = 16;

/// Waits again if a signal has interrupted the wait.
bool waitWritable(std::intptr_t socket, StatementTimeout::Clock::time_point deadline) {
    for (;;) {
        const auto left = std::chrono::duration_cast<std::chrono::milliseconds>(
            deadline - StatementTimeout::Clock::now());
        if (Sockets::waitWritable(socket, left.count() < 0 ? 0 : static_cast<int>(left.count()))) {
            return true;
        }
        if (StatementTimeout::Clock::now() >= deadline) {
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
        throw std::runtime_error("there is no address for the host " + host + ": " +
                                 Sockets::resolutionError(error));
    }
    return Addresses(found);
}

int count(const addrinfo* addresses) {
    int number = 0;
    for (; addresses != nullptr; addresses = addresses->ai_next) {
        ++number;
    }
    return number;
}

} // namespace

Connection::Connection(Protocol protocol, const std::string& host, int port,
                       StatementTimeout& timeout)
    : protocol_(protocol), timeout_(timeout), socket_(Sockets::invalidSocket) {
    Sockets::initialize();
    try {
        connect(host, port);
    } catch (...) {
        Sockets::shutdown();
        throw;
    }
}

void Connection::connect(const std::string& host, int port) {
    const Addresses addresses = resolve(protocol_, host, port);
    const Clock::time_point deadline = timeout_.deadline();
    int addressesLeft = count(addresses.get());
    int error = 0;
    for (const addrinfo* address = addresses.get(); address != nullptr;
         address = address->ai_next) {
        const Clock::time_point now = Clock::now();
        error = connectTo(*address, now + (deadline - now) / addressesLeft);
        if (error == 0) {
            return;
        }
        --addressesLeft;
    }
    const std::string what = "no connection to " + host + " port " + std::to_string(port);
    if (error == noAnswer) {
        throw SinkTimeout(what + ": no answer");
    }
    throw std::system_error(error, std::system_category(), what);
}

/// Returns 0 once connected, noAnswer, or the error code of the system.
int Connection::connectTo(const addrinfo& address, Clock::time_point deadline) {
    const std::intptr_t socket = Sockets::create(address);
    if (socket == Sockets::invalidSocket) {
        return Sockets::lastError();
    }
    int error = noAnswer;
    if (!Sockets::connect(socket, address)) {
        error = Sockets::lastError();
    } else if (waitWritable(socket, deadline)) {
        error = Sockets::pendingError(socket);
    }
    if (error == 0) {
        socket_ = socket;
    } else {
        Sockets::close(socket);
    }
    return error;
}

Connection::~Connection() {
    Sockets::close(socket_);
    Sockets::shutdown();
}

void Connection::throwIfClosedByPeer() {
    // The system would accept one more message for a closed connection, and drop it unnoticed. What
    // the collector has sent precedes the end of the connection.
    if (protocol_ != Protocol::tcp) {
        return;
    }
    for (int i = 0; i < maxDiscards; ++i) {
        switch (Sockets::discardIncoming(socket_)) {
        case Sockets::Incoming::none:
            return;
        case Sockets::Incoming::discarded:
            break;
        case Sockets::Incoming::ended:
            throw std::runtime_error("the collector has closed the connection");
        }
    }
}

void Connection::send(const char* data, std::size_t size) {
    const Clock::time_point deadline = timeout_.deadline();
    throwIfClosedByPeer();
    while (size > 0) {
        const long long sent = Sockets::send(socket_, data, size);
        if (sent < 0) {
            throw std::system_error(Sockets::lastError(), std::system_category(),
                                    "the message cannot be sent");
        }
        data += sent;
        size -= static_cast<std::size_t>(sent);
        if (size > 0 && !waitWritable(socket_, deadline)) {
            throw SinkTimeout("the collector takes no more messages");
        }
    }
    timeout_.end();
}

} // namespace ZOL::Backends
