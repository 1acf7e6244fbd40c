#include "ReopeningSink.h"

#include <exception>
#include <new>
#include <utility>

#include <spdlog/details/os.h>
#include <spdlog/sinks/sink.h>

#include "Levels.h"

namespace ZOL::Backends {

const char* const platformLineEnd = spdlog::details::os::default_eol;

namespace {

constexpr const char* retryPending = "it is not time yet to try again";
constexpr const char* unknownReason = "for a reason unknown";

} // namespace

WriterOptions writerOptions(const SinkOptions& options, std::size_t maxLineBytes) {
    return {[options](const WriterContext& context) {
                return std::make_unique<ReopeningSink>(context, options);
            },
            maxLineBytes};
}

ReopeningSink::ReopeningSink(const WriterContext& context, SinkOptions options)
    : options_(std::move(options)),
      pattern_(context.pattern),
      timeType_(context.timeType),
      drops_(context.drops) {}

ReopeningSink::~ReopeningSink() = default;

void ReopeningSink::openSink() {
    try {
        sink_ = options_.factory();
        sink_->set_formatter(makeFormatter(pattern_, timeType_, options_.lineEnd, record_));
    } catch (...) {
        sink_.reset();
        startRetryInterval();
        throw;
    }
    startRetryInterval();
}

void ReopeningSink::write(const Record& record) noexcept {
    ScopedSignalBlock signalBlock(options_.signals ? options_.signals() : WriteSignals());
    std::string reason;
    try {
        record_ = record;
        const spdlog::details::log_msg message({record.logger.data(), record.logger.size()},
                                               sinkLevel(record.level),
                                               {record.line.data(), record.line.size()});
        // If an open sink fails, retry once at once: the collector may have been restarted, or the
        // file moved away.
        for (int attempt = 0; attempt < 2; ++attempt) {
            if (sink_ == nullptr) {
                if (Clock::now() < nextOpening_) {
                    drops_.add(reason.empty() ? retryPending : reason);
                    return;
                }
                openSink();
            }
            try {
                sink_->log(message);
                sink_->flush();
                drops_.reset();
                return;
            } catch (const SinkTimeout&) {
                startRetryInterval();
                throw;
            } catch (const std::bad_alloc&) {
                throw;
            } catch (const std::exception& error) {
                signalBlock.writeFailed();
                sink_.reset(); // its state is unknown after a failure
                reason = error.what();
            }
        }
        drops_.add(reason);
    } catch (const std::bad_alloc&) {
        // The sink may be half open. The next message opens it: its partner has not failed.
        sink_.reset();
        nextOpening_ = Clock::time_point::min();
        drops_.addOutOfMemory();
    } catch (const std::exception& error) {
        signalBlock.writeFailed();
        sink_.reset();
        drops_.add(error.what());
    } catch (...) {
        signalBlock.writeFailed();
        sink_.reset();
        drops_.add(unknownReason);
    }
}

} // namespace ZOL::Backends
