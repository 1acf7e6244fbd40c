// The SystemLog back end on Linux: sends each message to the system log through /dev/log.

#include <ctime>
#include <stdexcept>
#include <string_view>

#include <spdlog/details/null_mutex.h>
#include <spdlog/details/os.h>
#include <spdlog/fmt/chrono.h>
#include <spdlog/sinks/base_sink.h>
#include <syslog.h>

#include "Process.h"
#include "ReopeningSink.h"
#include "SinkBackend.h"
#include "SyslogPriority.h"
#include "linux/LogSocket.h"

using namespace ZOL::Backends;

namespace {

constexpr const char* systemLogPath = "/dev/log";

struct Facility {
    std::string_view name;
    int code;
};

constexpr Facility facilities[] = {
    {"user", LOG_USER},     {"daemon", LOG_DAEMON}, {"local0", LOG_LOCAL0}, {"local1", LOG_LOCAL1},
    {"local2", LOG_LOCAL2}, {"local3", LOG_LOCAL3}, {"local4", LOG_LOCAL4}, {"local5", LOG_LOCAL5},
    {"local6", LOG_LOCAL6}, {"local7", LOG_LOCAL7}};

int facilityCode(std::string_view name) {
    for (const Facility& facility : facilities) {
        if (facility.name == name) {
            return facility.code;
        }
    }
    throw std::logic_error("a facility of the table of settings is unknown");
}

/// Sends to the system log. spdlog's own sink calls openlog, which replaces the host's settings; it
/// blocks without a limit while the log does not read, and does not report dropped messages.
class SystemLogSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    SystemLogSink(std::string name, int facility)
        : name_(std::move(name)), facility_(facility), socket_(systemLogPath) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t text;
        formatter_->format(message, text);
        const std::tm time = spdlog::details::os::localtime();
        socket_.send(fmt::format("<{}>{:%b %e %H:%M:%S} {}[{}]: {}",
                                 facility_ | syslogPriority(message.level), time, name_,
                                 spdlog::details::os::pid(), fmt::to_string(text)));
    }

    void flush_() override {}

    std::string name_;
    int facility_;
    LogSocket socket_;
};

WriterOptions readOptions(const Settings& settings) {
    const std::string name = settings.text("source");
    const int facility = facilityCode(settings.choice("facility"));
    SinkOptions options;
    options.factory = [name, facility] {
        return std::make_unique<SystemLogSink>(name, facility);
    };
    options.lineEnd = "";
    return writerOptions(options, LogSocket::maxTextBytes);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("SystemLog", readOptions);
}
