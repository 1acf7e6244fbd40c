// The Network back end: sends each message to a collector, as one line by TCP or as one UDP packet.

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "Connection.h"
#include "Pattern.h"
#include "ReopeningSink.h"
#include "SinkBackend.h"

using namespace ZOL::Backends;

namespace {

constexpr auto timeout = std::chrono::seconds(1); // of one statement: all loggers wait
constexpr auto retryInterval = std::chrono::seconds(5);

constexpr std::size_t maxPacketTextBytes = 60000; // of 65507, which leaves room for the pattern

/// spdlog's own sinks block all loggers of the process without a time limit.
class NetworkSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    NetworkSink(Connection::Protocol protocol, const std::string& host, int port,
                StatementTimeout& statement)
        : connection_(protocol, host, port, statement) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        connection_.send(line.data(), line.size());
    }

    void flush_() override {}

    Connection connection_;
};

WriterOptions readOptions(const Settings& settings) {
    const std::string host = settings.text("host");
    const auto port = static_cast<int>(settings.number("port"));
    const auto protocol = settings.choice("protocol") == "tcp" ? Connection::Protocol::tcp
                                                               : Connection::Protocol::udp;
    SinkOptions options;
    options.factory = [=, statement = std::make_shared<StatementTimeout>(timeout)] {
        return std::make_unique<NetworkSink>(protocol, host, port, *statement);
    };
    options.lineEnd = "\n"; // the collector may run on another platform
    options.retryInterval = retryInterval;
    return writerOptions(options, protocol == Connection::Protocol::udp ? maxPacketTextBytes
                                                                        : unlimitedLineBytes);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("Network", readOptions);
}
