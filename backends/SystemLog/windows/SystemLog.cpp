// The SystemLog back end on Windows: reports each message as an event to the event log.

#include <cstddef>
#include <string>
#include <system_error>
#include <vector>

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>
#include <windows.h>

#include "ReopeningSink.h"
#include "SinkBackend.h"
#include "Text.h"

using namespace ZOL::Backends;

namespace {

constexpr std::size_t maxEventBytes = 30000; // Windows accepts at most 31839 characters
constexpr DWORD eventId = 1000;

[[noreturn]] void throwLastError(const char* function) {
    throw std::system_error(static_cast<int>(GetLastError()), std::system_category(), function);
}

WORD eventType(spdlog::level::level_enum level) {
    switch (level) {
    case spdlog::level::critical:
    case spdlog::level::err:
        return EVENTLOG_ERROR_TYPE;
    case spdlog::level::warn:
        return EVENTLOG_WARNING_TYPE;
    case spdlog::level::info:
        return EVENTLOG_INFORMATION_TYPE;
    default:
        return EVENTLOG_SUCCESS;
    }
}

/// A TOKEN_USER of this process. Empty on failure: the events then name no user.
std::vector<std::byte> currentUser() {
    HANDLE token = nullptr;
    if (!OpenProcessToken(GetCurrentProcess(), TOKEN_QUERY, &token)) {
        return {};
    }
    DWORD size = 0;
    GetTokenInformation(token, TokenUser, nullptr, 0, &size);
    std::vector<std::byte> user(size);
    if (!GetTokenInformation(token, TokenUser, user.data(), size, &size)) {
        user.clear();
    }
    CloseHandle(token);
    return user;
}

/// spdlog's own sink takes the name of the source for a text in the ANSI code page.
class EventLogSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    explicit EventLogSink(const std::string& source)
        : user_(currentUser()), log_(RegisterEventSourceW(nullptr, utf16(source).c_str())) {
        if (log_ == nullptr) {
            throwLastError("RegisterEventSource");
        }
    }
    EventLogSink(const EventLogSink&) = delete;
    EventLogSink& operator=(const EventLogSink&) = delete;
    ~EventLogSink() override { DeregisterEventSource(log_); }

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        const std::wstring text = utf16({line.data(), line.size()});
        const wchar_t* texts[] = {text.c_str()};
        PSID const user =
            user_.empty() ? nullptr : reinterpret_cast<const TOKEN_USER*>(user_.data())->User.Sid;
        if (!ReportEventW(log_, eventType(message.level), static_cast<WORD>(message.level), eventId,
                          user, 1, 0, texts, nullptr)) {
            throwLastError("ReportEvent");
        }
    }

    void flush_() override {}

    std::vector<std::byte> user_;
    HANDLE log_;
};

WriterOptions readOptions(const Settings& settings) {
    const std::string source = settings.text("source");
    SinkOptions options;
    options.factory = [source] {
        return std::make_unique<EventLogSink>(source);
    };
    options.lineEnd = "";
    return writerOptions(options, maxEventBytes);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("SystemLog", readOptions);
}
