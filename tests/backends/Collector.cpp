#include "Collector.h"

#include <algorithm>
#include <cstring>
#include <stdexcept>

#include "CollectorSockets.h"

namespace {

constexpr std::intptr_t invalidSocket = -1;
constexpr long timeoutSeconds = 10;

sockaddr_in socketAddress(const char* address, int port) {
    sockaddr_in result{};
    result.sin_family = AF_INET;
    result.sin_port = htons(static_cast<std::uint16_t>(port));
    inet_pton(AF_INET, address, &result.sin_addr);
    return result;
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

Collector::Collector(Kind kind, int port, const char* address)
    : listener_(invalidSocket), sender_(invalidSocket) {
    std::fill(std::begin(waiting_), std::end(waiting_), invalidSocket);
    initializeSockets();
    listener_ = newSocket(kind == Kind::udp);
    allowPortReuse(static_cast<Socket>(listener_));
    const sockaddr_in own = socketAddress(address, port);
    if (bind(static_cast<Socket>(listener_), reinterpret_cast<const sockaddr*>(&own),
             sizeof(own)) != 0) {
        throw std::runtime_error("the collector cannot bind its port");
    }
    if (kind == Kind::udp) {
        sender_ = listener_;
        return;
    }
    listen(static_cast<Socket>(listener_), kind == Kind::unresponsive ? 0 : 1);
    if (kind == Kind::unresponsive) {
        // These connections fill the listen queue.
        const sockaddr_in bound = socketAddress(address, this->port());
        for (std::intptr_t& waiting : waiting_) {
            waiting = newSocket(false);
            makeNonBlocking(static_cast<Socket>(waiting));
            // It stays pending: it is never accepted.
            static_cast<void>(connect(static_cast<Socket>(waiting),
                                      reinterpret_cast<const sockaddr*>(&bound), sizeof(bound)));
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

long long Collector::send(const std::string& text) {
    accept();
    makeNonBlocking(static_cast<Socket>(sender_));
    return ::send(static_cast<Socket>(sender_), text.data(), static_cast<BufferLength>(text.size()),
                  noSignal);
}

std::string Collector::read(std::size_t size) {
    accept();
    std::string text(size, '\0');
    const auto received = waitReadable(sender_) ? recv(static_cast<Socket>(sender_), text.data(),
                                                       static_cast<BufferLength>(size), 0)
                                                : 0;
    text.resize(received > 0 ? static_cast<std::size_t>(received) : 0);
    return text;
}

void Collector::endSending() {
    constexpr int sending = 1; // SHUT_WR or SD_SEND
    accept();
    shutdown(static_cast<Socket>(sender_), sending);
}

void Collector::disconnect() {
    accept();
    closeSocket(static_cast<Socket>(sender_));
    sender_ = invalidSocket;
}

std::string Collector::receive(const std::string& end) {
    accept();
    std::string text;
    while (text.size() < end.size() || text.substr(text.size() - end.size()) != end) {
        const std::string part = read(65536); // no UDP packet is larger
        if (part.empty()) {
            break;
        }
        text += part;
    }
    return text;
}
