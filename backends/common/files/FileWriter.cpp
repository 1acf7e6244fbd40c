#include "files/FileWriter.h"

#include <exception>
#include <new>

#include "Levels.h"
#include "ReopeningSink.h"
#include "ScopedSignalBlock.h"

namespace ZOL::Backends {

namespace {

/// Memory that is kept for the lines of the next messages.
constexpr std::size_t maxKeptBytes = std::size_t{64} * 1024;

} // namespace

WriterOptions writerOptions(const RotatingLogSettings& settings) {
    return {[settings](const WriterContext& context) {
                return std::make_unique<FileWriter>(context, settings);
            },
            unlimitedLineBytes, BufferedLog::needsWorker(settings)};
}

FileWriter::FileWriter(const WriterContext& context, const RotatingLogSettings& settings)
    : formatter_(makeFormatter(context.pattern, context.timeType, platformLineEnd, record_)),
      log_(std::make_shared<BufferedLog>(context.backend, settings)),
      drops_(context.drops) {}

void FileWriter::write(const Record& record) noexcept {
    ScopedSignalBlock signalBlock({false, log_->mayExceedProcessLimit()});
    try {
        record_ = record;
        const spdlog::details::log_msg message({record.logger.data(), record.logger.size()},
                                               sinkLevel(record.level),
                                               {record.line.data(), record.line.size()});
        line_.clear();
        formatter_->format(message, line_);
        log_->write({line_.data(), line_.size()}, record.level, message.time);
        drops_.reset();
    } catch (const std::bad_alloc&) {
        drops_.addOutOfMemory();
    } catch (const std::exception& error) {
        signalBlock.writeFailed();
        drops_.add(error.what());
    }
    log_->countLostLines(drops_);
    if (line_.capacity() > maxKeptBytes) {
        line_ = spdlog::memory_buf_t();
    }
}

FileWriter::~FileWriter() {
    log_->close();
    log_->countLostLines(drops_);
}

void FileWriter::finish() noexcept {
    log_->finish();
    log_->countLostLines(drops_);
}

} // namespace ZOL::Backends
