// The DebugOutput back end on Windows: writes each message as one line to the debugger, or to a
// viewer of debugger output such as DebugView.

#include <algorithm>
#include <cstddef>
#include <string>

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>
#include <windows.h>

#include "ReopeningSink.h"
#include "SinkBackend.h"
#include "Text.h"

using namespace ZOL::Backends;

namespace {

/// The system passes 4 KB in the ANSI code page to a viewer. Some systems truncate a longer text.
constexpr std::size_t maxUnits = 1000; // of up to 4 bytes

/// spdlog's own sink passes UTF-8 as if it were in the ANSI code page.
class DebuggerSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        const std::wstring text = utf16({line.data(), line.size()});
        for (std::size_t begin = 0; begin < text.size();) {
            std::size_t size = std::min(maxUnits, text.size() - begin);
            if (begin + size < text.size() && IS_HIGH_SURROGATE(text[begin + size - 1])) {
                --size;
            }
            OutputDebugStringW(text.substr(begin, size).c_str());
            begin += size;
        }
    }

    void flush_() override {}
};

WriterOptions readOptions(const Settings&) {
    SinkOptions options;
    options.factory = [] {
        return std::make_unique<DebuggerSink>();
    };
    options.lineEnd = "\n";
    return writerOptions(options);
}

} // namespace

extern "C" ZOL_BACKEND_EXPORT ZOL::Framework::GenericLogger::LoggerBackend* createBackend() {
    return createSinkBackend("DebugOutput", readOptions);
}
