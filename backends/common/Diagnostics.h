#pragma once

#include <atomic>
#include <string>
#include <string_view>

namespace ZOL::Backends {

/// Writes one line about a back end to standard error. Any thread may call it. False if there is no
/// memory for the line.
bool reportToStderr(std::string_view backend, std::string_view text) noexcept;

/// Counts dropped messages and reports them: the first one with its reason, and the number of them
/// when a message is written again or when the process ends.
///
/// Calls are serialised by the caller, except reportAtExit.
class DropCounter {
public:
    explicit DropCounter(std::string_view backend) : backend_(backend) {}

    /// A message is dropped. The reason is reported for the first message only.
    void add(std::string_view reason) noexcept;

    /// A message has been written: reports the drops before it, and starts at 0 again. If there is
    /// no memory for the report, it is left to the next call.
    void reset() noexcept;

    /// Reports the drops since the last reset. May run at the same time as other calls.
    void reportAtExit() const noexcept;

private:
    std::string backend_;
    std::atomic<unsigned long long> count_ = 0;
};

/// Blocks SIGPIPE and SIGXFSZ for the current thread, so that a write to a pipe or connection
/// without a reader, or beyond the file size limit, fails instead of ending the process. The
/// destructor discards these signals if they are pending, and unblocks them; a signal that was
/// blocked before is left alone.
class ScopedSignalBlock {
public:
    ScopedSignalBlock() noexcept;
    ScopedSignalBlock(const ScopedSignalBlock&) = delete;
    ScopedSignalBlock& operator=(const ScopedSignalBlock&) = delete;
    // NOLINTNEXTLINE(performance-trivially-destructible): empty on Windows only
    ~ScopedSignalBlock();

private:
    bool blockedPipe_ = false;
    bool blockedFileSize_ = false;
};

} // namespace ZOL::Backends
