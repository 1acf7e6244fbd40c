// The Network back end: every message as one line to a collector, by TCP or in a UDP packet each.

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "Connection.h"
#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

constexpr const char* defaultHost = "127.0.0.1";
constexpr long long defaultPort = 5170;
constexpr long long lastPort = 65535;
constexpr auto pause = std::chrono::seconds(5); // an attempt may hold up all loggers for a second

constexpr std::size_t longestInAPacket = 60000; // of 65507 bytes, with a pattern around it

/// spdlog's own would wait without a limit, and with it all loggers of the process.
class NetworkSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    NetworkSink(Connection::Protocol protocol, const std::string& host, int port)
        : connection_(protocol, host, port) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        connection_.send(line.data(), line.size());
    }

    void flush_() override {}

    Connection connection_;
};

SinkPlan plan(const Settings& settings) {
    const std::string host = settings.text("host", defaultHost);
    const auto port = static_cast<int>(settings.number("port", defaultPort, 1, lastPort));
    const auto protocol = settings.choice("protocol", {"tcp", "udp"}) == 0
                              ? Connection::Protocol::tcp
                              : Connection::Protocol::udp;
    SinkPlan result;
    result.make = [=] {
        return std::make_unique<NetworkSink>(protocol, host, port);
    };
    result.lineEnd = "\n"; // the collector need not run on this platform
    result.pause = pause;
    if (protocol == Connection::Protocol::udp) {
        result.longestLine = longestInAPacket;
    }
    return result;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = makeSinkBackend("Network", plan);
    return backend;
}
