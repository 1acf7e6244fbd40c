// The DebugOutput back end on Linux: every message goes to the journal, with its logger as a field.

#include <cerrno> // for the program's name
#include <cstdint>

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "DatagramSocketLinux.h"
#include "SinkBackend.h"
#include "SyslogPriority.h"

using namespace ZOL::Backends;

namespace {

constexpr const char* journal = "/run/systemd/journal/socket";

/// One field: its name, a line break, the length in 8 bytes from the lowest on, the value, a line
/// break. The value may be anything.
void addField(std::string& entry, std::string_view name, std::string_view value) {
    entry.append(name) += '\n';
    for (unsigned shift = 0; shift < 64; shift += 8) {
        entry += static_cast<char>(static_cast<std::uint64_t>(value.size()) >> shift & 0xFF);
    }
    entry.append(value) += '\n';
}

/// Writes to the journal's own socket, for which spdlog's sink would need one more library.
class JournalSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    JournalSink() : socket_(journal) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t text;
        formatter_->format(message, text);
        std::string entry;
        addField(entry, "MESSAGE", {text.data(), text.size()});
        addField(entry, "PRIORITY", std::to_string(syslogPriority(message.level)));
        addField(entry, "SYSLOG_IDENTIFIER", program_invocation_short_name);
        addField(entry, "ZOL_LOGGER", {message.logger_name.data(), message.logger_name.size()});
        socket_.send(entry);
    }

    void flush_() override {}

    DatagramSocket socket_;
};

SinkPlan plan(const Settings&) {
    SinkPlan result;
    result.make = [] {
        return std::make_unique<JournalSink>();
    };
    result.pattern = "%v"; // the journal has a time of its own
    result.lineEnd = "";
    result.longestLine = DatagramSocket::longestText;
    return result;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = makeSinkBackend("DebugOutput", plan);
    return backend;
}
