#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <memory>
#include <stdexcept>
#include <string>

#include <spdlog/fwd.h>

#include "Diagnostics.h"
#include "Pattern.h"
#include "RecordWriter.h"
#include "ScopedSignalBlock.h"

namespace ZOL::Backends {

/// Thrown by a sink that has waited as long as it may. ReopeningSink then does not try a second
/// time for the same message: a statement waits for one timeout, not for two.
class SinkTimeout : public std::runtime_error {
public:
    using std::runtime_error::runtime_error;
};

/// Opens a sink, or throws.
using SinkFactory = std::function<std::unique_ptr<spdlog::sinks::sink>()>;

/// The line end of the platform.
extern const char* const platformLineEnd;

/// What differs from one sink to another.
struct SinkOptions {
    SinkFactory factory;
    const char* lineEnd = platformLineEnd;
    /// From one attempt to open to the next, and after a timeout. Counted from the end of an
    /// attempt, which may itself take long.
    std::chrono::milliseconds retryInterval = std::chrono::seconds(1);
    /// The signals that the sink can raise at the moment; asked before each message. A sink that
    /// raises none needs no function.
    std::function<WriteSignals()> signals;
};

/// The options of a back end that writes to a sink.
WriterOptions writerOptions(const SinkOptions& options,
                            std::size_t maxLineBytes = unlimitedLineBytes);

/// Writes to a sink, and opens the sink again after a failure, at most once per retry interval.
/// Messages in between are dropped and counted.
class ReopeningSink final : public RecordWriter {
public:
    ReopeningSink(const WriterContext& context, SinkOptions options);
    ~ReopeningSink() override;

    /// Writes one message and flushes it.
    void write(const Record& record) noexcept override;

private:
    using Clock = std::chrono::steady_clock;

    void openSink();
    void startRetryInterval() noexcept { nextOpening_ = Clock::now() + options_.retryInterval; }

    SinkOptions options_;
    std::string pattern_;
    spdlog::pattern_time_type timeType_;
    Record record_; ///< the message that is written
    Clock::time_point nextOpening_ = Clock::time_point::min();
    std::unique_ptr<spdlog::sinks::sink> sink_;
    DropCounter& drops_;
};

} // namespace ZOL::Backends
