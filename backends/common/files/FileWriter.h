#pragma once

#include <memory>

#include <spdlog/common.h>
#include <spdlog/formatter.h>

#include "Diagnostics.h"
#include "Pattern.h"
#include "RecordWriter.h"
#include "files/RotatingLog.h"

namespace ZOL::Backends {

/// The options of a back end that writes to a log file.
WriterOptions writerOptions(const RotatingLogSettings& settings);

/// Writes each message as one line to a log file. The system has it when the statement ends.
class FileWriter final : public RecordWriter {
public:
    FileWriter(const WriterContext& context, const RotatingLogSettings& settings);

    void write(const Record& record) noexcept override;

private:
    Record record_; ///< the message that is written
    std::unique_ptr<spdlog::formatter> formatter_;
    spdlog::memory_buf_t line_; ///< kept from one message to the next for its memory
    RotatingLog log_;
    DropCounter& drops_;
};

} // namespace ZOL::Backends
