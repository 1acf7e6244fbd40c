#pragma once

#include <memory>

#include <spdlog/common.h>
#include <spdlog/formatter.h>

#include "Diagnostics.h"
#include "Pattern.h"
#include "RecordWriter.h"
#include "files/BufferedLog.h"

namespace ZOL::Backends {

/// The options of a back end that writes to a log file.
WriterOptions writerOptions(const RotatingLogSettings& settings);

/// Writes each message as one line to a log file. The system has it when the statement ends, or
/// after the interval of the settings.
class FileWriter final : public RecordWriter {
public:
    FileWriter(const WriterContext& context, const RotatingLogSettings& settings);

    ~FileWriter() override;

    void write(const Record& record) noexcept override;
    void finish() noexcept override;

private:
    Record record_; ///< the message that is written
    std::unique_ptr<spdlog::formatter> formatter_;
    spdlog::memory_buf_t line_;        ///< kept from one message to the next for its memory
    std::shared_ptr<BufferedLog> log_; ///< its worker owns it as well
    DropCounter& drops_;
};

} // namespace ZOL::Backends
