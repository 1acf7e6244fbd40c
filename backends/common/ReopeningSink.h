#pragma once

#include <chrono>
#include <cstddef>
#include <functional>
#include <limits>
#include <memory>
#include <stdexcept>
#include <string>
#include <string_view>

#include <spdlog/fwd.h>

#include "Diagnostics.h"
#include "Pattern.h"
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

/// What differs from one back end to another.
struct SinkOptions {
    SinkFactory factory;
    const char* lineEnd = platformLineEnd;
    /// From one attempt to open to the next, and after a timeout. Counted from the end of an
    /// attempt, which may itself take long.
    std::chrono::milliseconds retryInterval = std::chrono::seconds(1);
    /// Limit for %v, which is "LEVEL [logger] text"; longer lines are truncated. Without a limit, a
    /// line that is too long for the sink would close it, and the next messages would be dropped.
    std::size_t maxLineBytes = std::numeric_limits<std::size_t>::max();
    /// The signals that the sink can raise at the moment; asked before each message. A sink that
    /// raises none needs no function.
    std::function<WriteSignals()> signals;
};

/// Writes to a sink, and opens the sink again after a failure, at most once per retry interval.
/// Messages in between are dropped and counted. No function throws.
///
/// Calls are serialised by the caller, except reportDropsAtExit.
class ReopeningSink {
public:
    ReopeningSink(std::string_view backend, std::string pattern, const SinkOptions& options,
                  spdlog::pattern_time_type timeType = spdlog::pattern_time_type::local);
    ReopeningSink(const ReopeningSink&) = delete;
    ReopeningSink& operator=(const ReopeningSink&) = delete;
    ~ReopeningSink();

    /// Writes one message and flushes it.
    void write(const Record& record) noexcept;

    /// Counts a message that was dropped before it came here, because memory was short.
    void countOutOfMemory() noexcept;

    /// Closes the sink. The next message opens it with this pattern and these options, at once.
    /// The count of dropped messages stays.
    void reconfigure(std::string pattern, SinkOptions options,
                     spdlog::pattern_time_type timeType) noexcept;

    void reportDropsAtExit() const noexcept { drops_.reportAtExit(); }

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
    DropCounter drops_;
};

} // namespace ZOL::Backends
