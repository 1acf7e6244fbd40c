#pragma once

namespace ZOL::Backends {

/// Which signals a write can raise. Each of them ends a process by default.
struct WriteSignals {
    bool pipe = false;     ///< SIGPIPE: a pipe or connection has no reader any more
    bool fileSize = false; ///< SIGXFSZ: the file would exceed the size limit of the process
};

/// Whether the process has a file size limit at the moment. False on Windows.
bool isFileSizeLimited() noexcept;

/// Blocks signals for the current thread, so that a write that would raise them fails instead. The
/// destructor restores the thread's signal mask. If a write failed, it discards the signals which
/// that write has raised; a signal that was pending before stays pending.
///
/// Without signals to block, no system call is made.
class ScopedSignalBlock {
public:
    explicit ScopedSignalBlock(WriteSignals signals) noexcept;
    ScopedSignalBlock(const ScopedSignalBlock&) = delete;
    ScopedSignalBlock& operator=(const ScopedSignalBlock&) = delete;
    // NOLINTNEXTLINE(performance-trivially-destructible): empty on Windows only
    ~ScopedSignalBlock();

    /// A write failed and may have raised a signal.
    void writeFailed() noexcept { writeFailed_ = true; }

private:
    WriteSignals raised_;  // by a failed write: those that were not pending before
    WriteSignals unblock_; // those that the host had not blocked
    bool writeFailed_ = false;
};

} // namespace ZOL::Backends
