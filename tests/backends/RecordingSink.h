#pragma once

#include <string>
#include <vector>

#include <spdlog/details/null_mutex.h>
#include <spdlog/sinks/base_sink.h>

#include "ReopeningSink.h"

/// What a sink has been given.
struct RecordedLine {
    std::string logger;
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
                          std::string(line.data(), line.size())});
    }
    void flush_() override {}

    std::vector<RecordedLine>& lines_;
};

/// Options of a back end that writes to a RecordingSink.
inline ZOL::Backends::SinkOptions recordingOptions(std::vector<RecordedLine>& lines) {
    ZOL::Backends::SinkOptions options;
    options.factory = [&lines] {
        return std::make_unique<RecordingSink>(lines);
    };
    options.lineEnd = "";
    return options;
}
