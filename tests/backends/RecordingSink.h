#pragma once

#include <cstddef>
#include <memory>
#include <string>
#include <vector>

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "ReopeningSink.h"
#include "SinkBackend.h"

/// What a sink has been given.
struct RecordedLine {
    std::string logger;
    std::string payload; ///< %v
    std::string line;
};

/// A sink in the test's memory.
class RecordingSink final : public spdlog::sinks::base_sink<spdlog::details::null_mutex> {
public:
    explicit RecordingSink(std::vector<RecordedLine>& lines) : lines_(lines) {}

private:
    void sink_it_(const spdlog::details::log_msg& message) override {
        spdlog::memory_buf_t line;
        formatter_->format(message, line);
        lines_.push_back({std::string(message.logger_name.data(), message.logger_name.size()),
                          std::string(message.payload.data(), message.payload.size()),
                          std::string(line.data(), line.size())});
    }
    void flush_() override {}

    std::vector<RecordedLine>& lines_;
};

/// Options of a back end that writes to a RecordingSink.
inline ZOL::Backends::WriterOptions recordingOptions(std::vector<RecordedLine>& lines,
                                                     std::size_t maxLineBytes = 1000) {
    ZOL::Backends::SinkOptions options;
    options.factory = [&lines] {
        return std::make_unique<RecordingSink>(lines);
    };
    options.lineEnd = "";
    return writerOptions(options, maxLineBytes);
}

/// A back end named Test that writes to a RecordingSink.
inline std::unique_ptr<ZOL::Backends::SinkBackend>
recordingBackend(std::vector<RecordedLine>& lines, std::size_t maxLineBytes = 1000) {
    return std::make_unique<ZOL::Backends::SinkBackend>(
        ZOL::Backends::Settings("Test"), [&lines, maxLineBytes](const ZOL::Backends::Settings&) {
            return recordingOptions(lines, maxLineBytes);
        });
}
