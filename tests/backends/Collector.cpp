#include "Collector.h"

#include <algorithm>
#include <array>
#include <cstring>
#include <stdexcept>

#if defined(_WIN32)
#include <winsock2.h>
#include <ws2tcpip.h>
#else
#include <arpa/inet.h>
#include <fcntl.h>
#include <sys/select.h>
#include <sys/socket.h>
#include <unistd.h>
#endif

namespace {

#if defined(_WIN32)
using Socket = SOCKET;
using Size = int;

void startSockets() {
    WSADATA data;
    WSAStartup(MAKEWORD(2, 2), &data);
}

void closeSocket(std::intptr_t socket) {
    closesocket(static_cast<Socket>(socket));
}

void neverWait(std::intptr_t socket) {
    u_long yes = 1;
    ioctlsocket(static_cast<Socket>(socket), static_cast<long>(FIONBIO), &yes);
}
#else
using Socket = int;
using Size = socklen_t;

void startSockets() {}

void closeSocket(std::intptr_t socket) {
    close(static_cast<Socket>(socket));
}

void neverWait(std::intptr_t socket) {
    fcntl(static_cast<Socket>(socket), F_SETFL, O_NONBLOCK);
}
#endif

constexpr std::intptr_t none = -1;
constexpr long patience = 10; // seconds

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

bool hasSomething(std::intptr_t socket) {
    fd_set ready;
    FD_ZERO(&ready);
    FD_SET(static_cast<Socket>(socket), &ready);
    timeval time{patience, 0};
    return select(static_cast<int>(socket) + 1, &ready, nullptr, nullptr, &time) == 1;
}

} // namespace

Collector::Collector(Kind kind, int port) : listener_(none), sender_(none) {
    std::fill(std::begin(waiting_), std::end(waiting_), none);
    startSockets();
    listener_ = newSocket(kind == Kind::udp);
#if !defined(_WIN32) // there, it would let two share the port
    const int yes = 1;
    setsockopt(static_cast<Socket>(listener_), SOL_SOCKET, SO_REUSEADDR, &yes, sizeof(yes));
#endif
    const sockaddr_in address = loopback(port);
    if (bind(static_cast<Socket>(listener_), reinterpret_cast<const sockaddr*>(&address),
             sizeof(address)) != 0) {
        throw std::runtime_error("the collector gets no port");
    }
    if (kind == Kind::udp) {
        sender_ = listener_;
        return;
    }
    listen(static_cast<Socket>(listener_), kind == Kind::deaf ? 0 : 1);
    if (kind == Kind::deaf) {
        // Those who wait already fill the queue.
        const sockaddr_in own = loopback(this->port());
        for (std::intptr_t& waiting : waiting_) {
            waiting = newSocket(false);
            neverWait(waiting);
            // It stays under way: nobody accepts it.
            static_cast<void>(connect(static_cast<Socket>(waiting),
                                      reinterpret_cast<const sockaddr*>(&own), sizeof(own)));
        }
    }
}

Collector::~Collector() {
    for (const std::intptr_t waiting : waiting_) {
        if (waiting != none) {
            closeSocket(waiting);
        }
    }
    if (sender_ != none && sender_ != listener_) {
        closeSocket(sender_);
    }
    closeSocket(listener_);
}

int Collector::port() const {
    sockaddr_in address{};
    Size size = sizeof(address);
    getsockname(static_cast<Socket>(listener_), reinterpret_cast<sockaddr*>(&address), &size);
    return ntohs(address.sin_port);
}

void Collector::accept() {
    if (sender_ == none) {
        if (!hasSomething(listener_)) {
            throw std::runtime_error("nobody connects to the collector");
        }
        sender_ =
            static_cast<std::intptr_t>(::accept(static_cast<Socket>(listener_), nullptr, nullptr));
    }
}

std::string Collector::receive(const std::string& end) {
    accept();
    std::string text;
    std::array<char, 65536> buffer{}; // the largest packet there is
    while (text.size() < end.size() || text.substr(text.size() - end.size()) != end) {
        if (!hasSomething(sender_)) {
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
