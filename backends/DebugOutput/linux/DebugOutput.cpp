// The DebugOutput back end on Linux: sends each message to the systemd journal, with the name of
// its logger in a field.

#include <cstdint>
#include <utility>

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "Process.h"
#include "ReopeningSink.h"
#include "SinkBackend.h"
#include "SyslogPriority.h"
#include "linux/LogSocket.h"

using namespace ZOL::Backends;

namespace {

constexpr const char* journalPath = "/run/systemd/journal/socket";

/// Appends one field in the journal's binary form: name, '\n', length as 64 bits little-endian,
/// value, '\n'. The value may contain any byte.
void appendField(std::string& entry, std::string_view name, std::string_view value) {
    entry.append(name) += '\n';
    for (unsigned shift = 0; shift < 64; shift += 8) {
        entry += static_cast<char>(static_cast<std::uint64_t>(value.size()) >> shift & 0xFF);
    }
    entry.append(value) += '\n';
}

/// Sends to the journal's socket. spdlog's own sink needs libsystemd.
class JournalSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    JournalSink() : socket_(journalPath) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t text;
        formatter_->format(message, text);
        std::string entry;
        appendField(entry, "MESSAGE", {text.data(), text.size()});
        appendField(entry, "PRIORITY", std::to_string(syslogPriority(message.level)));
        appendField(entry, "SYSLOG_IDENTIFIER", programName());
        appendField(entry, "ZOL_LOGGER", {message.logger_name.data(), message.logger_name.size()});
        socket_.send(std::move(entry));
    }

    void flush_() override {}

    LogSocket socket_;
};

WriterOptions readOptions(const Settings&) {
    SinkOptions options;
    options.factory = [] {
        return std::make_unique<JournalSink>();
    };
    options.lineEnd = "";
    return writerOptions(options, LogSocket::maxTextBytes);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("DebugOutput", readOptions);
}
