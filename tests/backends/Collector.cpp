#include "Collector.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>

#include "CollectorSockets.h"

namespace {

constexpr std::intptr_t invalidSocket = -1;
constexpr long timeoutSeconds = 10;

sockaddr_in loopback(int port) {
    sockaddr_in address{};
    address.sin_family = AF_INET;
    address.sin_port = htons(static_cast<std::uint16_t>(port));
    address.sin_addr.s_addr = htonl(INADDR_LOOPBACK);
    return address;
}

std::intptr_t newSocket(bool udp) {
    return static_cast<std::intptr_t>(socket(AF_INET, udp ? SOCK_DGRAM : SOCK_STREAM, 0));
}

bool waitReadable(std::intptr_t socket) {
    fd_set ready;
    FD_ZERO(&ready);
    FD_SET(static_cast<Socket>(socket), &ready);
    timeval time{timeoutSeconds, 0};
    return select(static_cast<int>(socket) + 1, &ready, nullptr, nullptr, &time) == 1;
}

} // namespace

Collector::Collector(Kind kind, int port) : listener_(invalidSocket), sender_(invalidSocket) {
    std::fill(std::begin(waiting_), std::end(waiting_), invalidSocket);
    initializeSockets();
    listener_ = newSocket(kind == Kind::udp);
    allowPortReuse(static_cast<Socket>(listener_));
    const sockaddr_in address = loopback(port);
    if (bind(static_cast<Socket>(listener_), reinterpret_cast<const sockaddr*>(&address),
             sizeof(address)) != 0) {
        throw std::runtime_error("the collector cannot bind its port");
    }
    if (kind == Kind::udp) {
        sender_ = listener_;
        return;
    }
    listen(static_cast<Socket>(listener_), kind == Kind::unresponsive ? 0 : 1);
    if (kind == Kind::unresponsive) {
        // These connections fill the listen queue.
        const sockaddr_in own = loopback(this->port());
        for (std::intptr_t& waiting : waiting_) {
            waiting = newSocket(false);
            makeNonBlocking(static_cast<Socket>(waiting));
            // It stays pending: it is never accepted.
            static_cast<void>(connect(static_cast<Socket>(waiting),
                                      reinterpret_cast<const sockaddr*>(&own), sizeof(own)));
        }
    }
}

Collector::~Collector() {
    for (const std::intptr_t waiting : waiting_) {
        if (waiting != invalidSocket) {
            closeSocket(static_cast<Socket>(waiting));
        }
    }
    if (sender_ != invalidSocket && sender_ != listener_) {
        closeSocket(static_cast<Socket>(sender_));
    }
    closeSocket(static_cast<Socket>(listener_));
}

int Collector::port() const {
    sockaddr_in address{};
    SocketLength size = sizeof(address);
    getsockname(static_cast<Socket>(listener_), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

void Collector::accept() {
    if (sender_ == invalidSocket) {
        if (!waitReadable(listener_)) {
            throw std::runtime_error("no sender has connected to the collector");
        }
        sender_ =
            static_cast<std::intptr_t>(::accept(static_cast<Socket>(listener_), nullptr, nullptr));
    }
}

std::string Collector::receive(const std::string& end) {
    accept();
    std::string text;
    std::array<char, 65536> buffer{}; // no UDP packet is larger
    while (text.size() < end.size() || text.substr(text.size() - end.size()) != end) {
        if (!waitReadable(sender_)) {
            break;
        }
        const auto size = recv(static_cast<Socket>(sender_), buffer.data(), buffer.size(), 0);
        if (size <= 0) {
            break;
        }
        text.append(buffer.data(), static_cast<std::size_t>(size));
    }
    return text;
}
