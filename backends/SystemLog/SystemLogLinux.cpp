// The SystemLog back end on Linux: every message goes to the system's log, by its socket.

#include <cerrno> // for the program's name
#include <ctime>

#include <spdlog/details/null_mutex.h>
#include <spdlog/details/os.h>
#include <spdlog/fmt/chrono.h>
#include <spdlog/sinks/base_sink.h>

#include "DatagramSocketLinux.h"
#include "SinkBackend.h"
#include "SyslogPriority.h"

using namespace ZOL::Backends;

namespace {

constexpr const char* systemLog = "/dev/log";
constexpr int facilities[] = {LOG_USER,   LOG_DAEMON, LOG_LOCAL0, LOG_LOCAL1, LOG_LOCAL2,
                              LOG_LOCAL3, LOG_LOCAL4, LOG_LOCAL5, LOG_LOCAL6, LOG_LOCAL7};

/// spdlog's own would take over the host's name in the log by openlog, wait without a limit for a
/// log that is stuck, and not tell of a message that is lost.
class SystemLogSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    SystemLogSink(std::string name, int facility)
        : name_(std::move(name)), facility_(facility), socket_(systemLog) {}

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
    DatagramSocket socket_;
};

SinkPlan plan(const Settings& settings) {
    const std::string name = settings.text("source", program_invocation_short_name);
    const int facility =
        facilities[settings.choice("facility", {"user", "daemon", "local0", "local1", "local2",
                                                "local3", "local4", "local5", "local6", "local7"})];
    SinkPlan result;
    result.make = [name, facility] {
        return std::make_unique<SystemLogSink>(name, facility);
    };
    result.pattern = "%v"; // the log has a time of its own
    result.lineEnd = "";
    result.longestLine = DatagramSocket::longestText;
    return result;
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    static auto* const backend = makeSinkBackend("SystemLog", plan);
    return backend;
}
