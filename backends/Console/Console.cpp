// The Console back end: writes each message as one line to standard error,
//
//     2026-01-31 09:05:07.012 WARNING [orders] stock is low
//
// in the colour of its level if standard error is a terminal.

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "ReopeningSink.h"
#include "SinkBackend.h"
#include "StandardError.h"

using namespace ZOL::Backends;

namespace {

/// spdlog's own sinks ignore failed writes and write a coloured line in several pieces. On Windows
/// they show UTF-8 garbled.
class ConsoleSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    explicit ConsoleSink(bool hasColours) : hasColours_(hasColours) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        message.color_range_start = 0; // the formatter sets both
        message.color_range_end = 0;
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        const std::string_view text(line.data(), line.size());
        if (hasColours_ && message.color_range_end > message.color_range_start) {
            writeToStandardError(ColouredText{text, message.color_range_start,
                                              message.color_range_end, message.level});
        } else {
            writeToStandardError(text);
        }
    }

    void flush_() override {}

    bool hasColours_;
};

WriterOptions readOptions(const Settings& settings) {
    const std::string_view colour = settings.choice("colour");
    SinkOptions options;
    options.factory = [always = colour == "always", automatic = colour == "auto"] {
        return std::make_unique<ConsoleSink>(always || (automatic && standardErrorHasColours()));
    };
    options.retryInterval = std::chrono::milliseconds(0); // to open it costs nothing
    return writerOptions(options);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("Console", readOptions);
}
